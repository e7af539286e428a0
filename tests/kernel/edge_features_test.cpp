// Rounds, chamfers and drafts.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

using Edges = std::vector<std::string>;

// What a ball of radius 1 leaves in a square corner.
constexpr double kCorner = 1 - kPi / 4;

json Round(const Edges& edges, double radius, bool runs_on = true, int feature = 50) {
  return {
      {"feature", feature}, {"kind", "round"}, {"edges", edges}, {"radius", radius}, {"runs_on", runs_on}};
}

Edges AllEdges(const json& recipe) {
  return Keys(Built({recipe})["edges"]);
}

int Count(const json& part, const std::string& type) {
  const auto& faces = part["faces"];
  return static_cast<int>(
      std::count_if(faces.begin(), faces.end(), [&](const json& face) { return face["type"] == type; }));
}

TEST(Round, TakesMaterialOffEdgesAndPutsItIntoCorners) {
  const json cube = Brick(10, 10, 10);
  const json angle = Extrude(
      41, Front(), Polygon(1, {{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}}), {.depth = 8});
  const json drum = Extrude(41, Front(), {Circle(1, 0, 0, 10)}, {.depth = 20});
  const json ring = Extrude(41, Front(), {Circle(1, 0, 0, 20), Circle(2, 0, 0, 10)}, {.depth = 20});
  const json slot = Extrude(41, Front(), Slot(1, 15, 10), {.depth = 20});
  // The corner's centre lies r / 6 / kCorner outside the ball's; by Pappus it runs 2π around the axis.
  const auto rim = [](double centre, double r, double side) {
    return 2 * kPi * (centre * kCorner * r * r + side * r * r * r / 6);
  };
  const auto expect = [](const json& base, const Edges& edges, double radius, double volume, const char* type,
                         int faces) {
    const json plain = Built({base}), part = Built({base, Round(edges, radius)});
    EXPECT_NEAR(Volume(part) / volume, 1, 1e-6) << type;
    EXPECT_EQ(Count(part, type) - Count(plain, type), faces) << type;
    const auto after = Keys(part["faces"]);
    for (const std::string& key : Keys(plain["faces"]))
      EXPECT_EQ(std::count(after.begin(), after.end(), key), 1) << type << " " << key;
  };
  const Edges rim_edge{"41:end|41:side:1"};
  expect(Brick(), rim_edge, 3, 40 * 30 * 10 - kCorner * 9 * 40, "cylinder", 1);
  const Edges uprights{"41:side:1|41:side:2", "41:side:2|41:side:3", "41:side:3|41:side:4",
                       "41:side:1|41:side:4"};
  expect(Brick(), uprights, 5, 40 * 30 * 10 - 4 * kCorner * 25 * 10, "cylinder", 4);
  // (a - 2r)³ + 6 r (a - 2r)² + 3 π r² (a - 2r) + 4/3 π r³ for a = 10, r = 2
  expect(cube, AllEdges(cube), 2, 216 + 6 * 2 * 36 + 3 * kPi * 4 * 6 + 4.0 / 3 * kPi * 8, "sphere", 8);
  // A concave edge, and the rims of a drum and of a hole.
  expect(angle, {"41:side:3|41:side:4"}, 4, 300 * 8 + kCorner * 16 * 8, "cylinder", 1);
  expect(drum, rim_edge, 2, kPi * 100 * 20 - rim(8, 2, 1), "torus", 1);
  expect(ring, {"41:end|41:side:2"}, 2, kPi * 300 * 20 - rim(12, 2, -1), "torus", 1);
  // It runs on along two straights of 30 and, together, the rim of a full circle.
  expect(slot, rim_edge, 2, (30 * 20 + kPi * 100) * 20 - 2 * 30 * kCorner * 4 - rim(8, 2, 1), "torus", 2);
}

TEST(Round, IsNamedAfterItsEdges) {
  const Edges at_corner{"41:end|41:side:1", "41:end|41:side:2", "41:side:1|41:side:2"};
  const auto keys = [&](double width, double radius) {
    return Keys(Built({Brick(width), Round(at_corner, radius)})["faces"]);
  };
  const auto small = keys(40, 1);
  EXPECT_EQ(
      std::vector<std::string>(small.begin() + 6, small.end()),
      (std::vector<std::string>{"50:round:(41:end|41:side:1)", "50:round:(41:end|41:side:2)",
                                "50:round:(41:side:1|41:side:2)", "50:corner:(41:end|41:side:1|41:side:2)"}));
  EXPECT_EQ(keys(25, 4), small);
  // A round can be rounded where it ends.
  const std::string edge = "41:side:4|50:round:(41:end|41:side:1)";
  const json again = Built({Brick(), Round({"41:end|41:side:1"}, 3), Round({edge}, 1, true, 60)});
  EXPECT_GT(FaceNamed(again, "60:round:(" + edge + ")")["area"].get<double>(), 0);
}

TEST(Round, IsRefusedWhereItDoesNotFit) {
  const json cube = Brick(10, 10, 10);
  const json slot = Extrude(41, Front(), Slot(1, 15, 10));
  // A hole from below whose end is 1 behind the wall and 2 under the top. A round of 8 about (8, 12) meets
  // it: (1, 18) is √(7² + 6²) = 9.2 from there.
  const json hole =
      Extrude(45, Front(), {Circle(1, 20, 2.5, 1.5)}, {.operation = "cut", .mode = "blind", .depth = 18});
  const Edges opposite{"41:end|41:side:1", "41:end|41:side:3"};
  const std::string no_room = "The body has no room for the round.";
  const Edges edge{"41:end|41:side:1"};
  ExpectRefused({cube}, Round(AllEdges(cube), 5.0001), no_room);
  ExpectRefused({cube}, Round(opposite, 5), no_room);
  ExpectRefused({cube}, Round(edge, 12), no_room);
  ExpectRefused({Brick(40, 30, 20), hole}, Round(edge, 8), no_room);
  ExpectRefused({cube}, Round(edge, 0), "The radius must be above 0.");
  ExpectRefused({cube}, Round({"41:end|41:side:9"}, 1), "The body has no edge 41:end|41:side:9.");
  ExpectRefused({slot}, Round(edge, 1, false), "The round would run on to edge 41:end|41:side:2.");
  ExpectRefused({slot}, Round({"41:side:1|41:side:2"}, 1),
                "Edge 41:side:1|41:side:2 can't take a round: its faces run into each other.");
}

json Chamfer(const Edges& edges, const json& legs) {
  json recipe = {{"feature", 50}, {"kind", "chamfer"}, {"edges", edges}, {"runs_on", true}};
  recipe.update(legs);
  return recipe;
}

json Equal(double distance) {
  return {{"scheme", "equal"}, {"distance", distance}};
}

json Two(double distance, double distance2, const std::string& reference) {
  return {{"scheme", "two"}, {"distance", distance}, {"distance2", distance2}, {"reference", reference}};
}

json Angle(double distance, double angle_deg, const std::string& reference) {
  return {{"scheme", "angle"}, {"distance", distance}, {"angle_deg", angle_deg}, {"reference", reference}};
}

TEST(Chamfer, TakesATriangleOffEdgesAndPutsItIntoCorners) {
  const json cube = Extrude(41, Front(), Rectangle(1, 0, 0, 10, 10));
  const json angle = Extrude(
      41, Front(), Polygon(1, {{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}}), {.depth = 8});
  const json drum = Extrude(41, Front(), {Circle(1, 0, 0, 10)});
  struct Case {
    const char* what;
    json base;
    Edges edges;
    json legs;
    double volume;
  };
  const double tan30 = 1 / std::sqrt(3);
  const Case cases[] = {
      {"equal", Brick(), {"41:end|41:side:1"}, Equal(3), 12000 - 9.0 / 2 * 40},
      {"two", Brick(), {"41:end|41:side:1"}, Two(4, 2, "41:end"), 12000 - 4.0 * 2 / 2 * 40},
      {"angle", Brick(), {"41:end|41:side:1"}, Angle(4, 30, "41:end"), 12000 - 4 * 4 * tan30 / 2 * 40},
      {"concave", angle, {"41:side:3|41:side:4"}, Equal(3), 300 * 8 + 9.0 / 2 * 8},
      // The triangle's centre runs on a radius of 10 - 3/3.
      {"rim", drum, {"41:end|41:side:1"}, Equal(3), kPi * 1000 - 9.0 / 2 * 2 * kPi * 9},
      // 8³, six slabs of 8 · 8 · 1, twelve halves of 1 · 1 · 8, and of each corner the sixth that three
      // bevels and the flat between them leave.
      {"cube", cube, Keys(Built({cube})["edges"]), Equal(1), 512 + 6 * 64 + 12 * 4 + 8.0 / 6},
  };
  for (const Case& one : cases)
    EXPECT_NEAR(Volume(Built({one.base, Chamfer(one.edges, one.legs)})) / one.volume, 1, 1e-6) << one.what;
}

TEST(Chamfer, MeasuresTheDistanceOnTheReferenceSurface) {
  struct Case {
    json legs;
    double top, side;  // what is left of the two faces of the edge, 40 by 30 and 40 by 10
  };
  const Case cases[] = {
      {Two(4, 2, "41:end"), 40 * 26, 40 * 8},
      {Two(4, 2, "41:side:1"), 40 * 28, 40 * 6},
      {Angle(4, 60, "41:end"), 40 * 26, 40 * (10 - 4 * std::sqrt(3))},
      {Angle(4, 60, "41:side:1"), 40 * (30 - 4 * std::sqrt(3)), 40 * 6},
  };
  for (const Case& one : cases) {
    const json part = Built({Brick(), Chamfer({"41:end|41:side:1"}, one.legs)});
    ExpectClose(FaceNamed(part, "41:end")["area"].get<double>(), one.top, one.legs.dump());
    ExpectClose(FaceNamed(part, "41:side:1")["area"].get<double>(), one.side, one.legs.dump());
  }
  // An edge that isn't on it is measured from the older of its faces: 4 of side:3, 2 of side:4.
  const json part =
      Built({Brick(), Chamfer({"41:end|41:side:1", "41:side:3|41:side:4"}, Two(4, 2, "41:end"))});
  ExpectClose(FaceNamed(part, "41:side:3")["area"].get<double>(), (40 - 4) * 10);
}

TEST(Chamfer, IsNamedAfterItsEdges) {
  const Edges edges{"41:end|41:side:1", "41:side:3|41:side:4"};
  const auto keys = Keys(Built({Brick(), Chamfer(edges, Equal(1))})["faces"]);
  EXPECT_EQ(std::vector<std::string>(keys.begin() + 6, keys.end()),
            (std::vector<std::string>{"50:chamfer:(41:end|41:side:1)", "50:chamfer:(41:side:3|41:side:4)"}));
  EXPECT_EQ(Keys(Built({Brick(), Chamfer(edges, Two(2, 3, "41:end"))})["faces"]), keys);
}

TEST(Chamfer, IsRefusedWithTheReason) {
  const std::string edge = "41:end|41:side:1", no_room = "The body has no room for the chamfer.";
  const std::pair<json, std::string> cases[] = {
      {Equal(0), "The distance must be above 0."},
      {Equal(12), no_room},
      {Two(2, 2, "41:side:2"), "The reference surface isn't at the first edge."},
      {Angle(2, 0, "41:end"), "The second distance or angle must be above 0."},
      {Angle(2, 90, "41:end"), "The angle must be below 90 degrees."},
      {Angle(9, 50, "41:end"), no_room},  // 9 tan 50° is more than 10
  };
  for (const auto& [legs, reason] : cases)
    EXPECT_EQ(Reason({Brick(), Chamfer({edge}, legs)}), reason) << legs;
}

using Texts = std::vector<std::string>;

double Tan(double degrees) {
  return std::tan(degrees * kPi / 180);
}

const std::string kUpright = "41:side:3|41:side:4";
const Texts kWalls{"41:side:1", "41:side:2", "41:side:3", "41:side:4"};
const Texts kFloorEdges{"41:start|41:side:1", "41:start|41:side:2", "41:start|41:side:3",
                        "41:start|41:side:4"};

json Draft(const Texts& faces, const Texts& hinges, double angle_deg, const std::string& direction = kUpright,
           int feature = 60) {
  return {{"feature", feature}, {"kind", "draft"},        {"faces", faces},
          {"hinges", hinges},   {"direction", direction}, {"angle_deg", angle_deg}};
}

TEST(Draft, TiltsFacesAboutTheirHinges) {
  const double wedge = 10 * 10 * Tan(5) / 2 * 30;  // of a wall 10 high and 30 long
  const Texts wall{"41:side:2"};
  struct Case {
    const char* what;
    Texts faces, hinges;
    double angle, volume;
  };
  // A pyramid's stump by Simpson: 10 / 6 of the floor, four times the middle and the top.
  const double in = 10 * Tan(10);
  const double stump = 10.0 / 6 * (40 * 30 + 4 * (40 - in) * (30 - in) + (40 - 2 * in) * (30 - 2 * in));
  const Case cases[] = {
      {"inwards", wall, {"41:start|41:side:2"}, 5, 12000 - wedge},
      {"outwards", wall, {"41:start|41:side:2"}, -5, 12000 + wedge},
      // Below the hinge it is the other way round.
      {"from the top", wall, {"41:end|41:side:2"}, 5, 12000 + wedge},
      {"as it is", wall, {"41:start|41:side:2"}, 0, 12000},
      {"four walls", kWalls, kFloorEdges, 10, stump},
  };
  for (const Case& one : cases) {
    const json part = Built({Brick(), Draft(one.faces, one.hinges, one.angle)});
    EXPECT_NEAR(Volume(part) / one.volume, 1, 1e-6) << one.what;
    EXPECT_EQ(Keys(part["faces"]), Keys(Built({Brick()})["faces"])) << one.what;
    // The hinge's edges stay where they were.
    EXPECT_EQ(Keys(part["edges"]), Keys(Built({Brick()})["edges"])) << one.what;
  }
  // The pull goes along +y, whichever way its edge runs: the wall at x = 40, 30 deep, leans in.
  const json along_y = Draft(wall, {"41:side:1|41:side:2"}, 5, "41:end|41:side:4");
  ExpectClose(Volume(Built({Brick(), along_y})), 12000 - 30 * 30 * Tan(5) / 2 * 10);
  // The angle is that between the wall and the pull: once more the same changes nothing.
  const json once = Draft(wall, {"41:start|41:side:2"}, 5);
  ExpectClose(Volume(Built({Brick(), once, Draft(wall, {"41:start|41:side:2"}, 5, kUpright, 61)})),
              12000 - wedge);
  // The edge of a wall that leans already is a pull that leans along the next wall: the sine of that wall's
  // angle with it is cos 5° times that of its angle with the vertical. At height z 40 - z t by 30 - z u are
  // left.
  const double t = Tan(5), u = std::tan(std::asin(t));
  const json next = Draft({"41:side:1"}, {"41:start|41:side:1"}, 5, "41:side:1|41:side:2", 61);
  ExpectClose(Volume(Built({Brick(), once, next})), 12000 - 50 * (30 * t + 40 * u) + 1000 * t * u / 3);
}

TEST(Draft, MakesConesOfCylindersAndTakesAlongWhatRunsOn) {
  // A boss of radius 5, 20 high, on the block, and a hole of that radius through it.
  const json boss = Extrude(50, FrontAt(10), {Circle(5, 20, 15, 5)}, {.depth = 20});
  const json hole = Extrude(50, Front(), {Circle(5, 20, 15, 5)}, {.operation = "cut", .mode = "through_all"});
  const auto stump = [](double height, double low, double high) {
    return kPi * height / 3 * (low * low + low * high + high * high);
  };
  const double lean = 20 * Tan(3);
  const json on_boss = Built({Brick(), boss, Draft({"50:side:5"}, {"41:end|50:side:5"}, 3)});
  ExpectClose(Volume(on_boss), 12000 + stump(20, 5, 5 - lean));
  EXPECT_EQ(FaceNamed(on_boss, "50:side:5")["type"], "cone");
  // Material goes away from the wall of a hole when the hole widens.
  ExpectClose(Volume(Built({Brick(), hole, Draft({"50:side:5"}, {"41:start|50:side:5"}, 3)})),
              12000 - stump(10, 5, 5 + lean / 2));
  // One of two long walls takes the other and the half circles along: 30 by 20 - 2 t z and a cone.
  json top = FrontAt(10);
  top["origin"] = {20, 15, 10};
  const json slot = Extrude(50, top, Slot(5, 8, 5), {.depth = 20});
  const json slotted = Built({Brick(), slot, Draft({"50:side:5"}, {"41:end|50:side:5"}, 3)});
  ExpectClose(Volume(slotted), 12000 + 16 * 20 * (10 - lean) + stump(20, 5, 5 - lean));
}

TEST(Draft, IsRefusedWithTheReason) {
  const json tower = Brick(10, 10, 30);  // 30 tan 30° is more than 10
  const json boss = Extrude(50, FrontAt(10), {Circle(5, 20, 15, 5)}, {.depth = 20});
  const std::string no_room = "The body has no room for the draft.";
  const Texts wall{"41:side:2"}, foot{"41:start|41:side:2"};
  ExpectRefused({tower}, Draft(wall, foot, 30), no_room);
  ExpectRefused({Brick(), boss}, Draft({"50:side:5"}, {"41:end|50:side:5"}, 30), no_room);
  ExpectRefused({Brick()}, Draft(wall, foot, 30.1), "The angle must be between -30 and 30 degrees.");
  ExpectRefused({Brick()}, Draft({"41:end"}, {"41:end|41:side:2"}, 5), "Face 41:end can't be drafted.");
  ExpectRefused({Brick()}, Draft(wall, {"41:start|41:side:1"}, 5), "Face 41:side:2 has no hinge.");
  ExpectRefused({Brick()}, Draft(wall, {"41:start|41:side:2", "41:start|41:side:1"}, 5),
                "Hinge 41:start|41:side:1 is no edge of the drafted faces.");
  ExpectRefused({Brick()}, Draft(wall, {"41:start|41:side:2", "41:end|41:side:2"}, 5),
                "Face 41:side:2 has hinges on several lines.");
  ExpectRefused({Brick(), boss}, Draft(wall, foot, 5, "41:end|50:side:5"),
                "The pull direction must be a straight edge.");
}

}  // namespace
}  // namespace bench::kernel::testing

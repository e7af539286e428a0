// Rounds and chamfers.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

using Edges = std::vector<std::string>;

// What a ball of radius 1 leaves in a square corner.
constexpr double kCorner = 1 - kPi / 4;

json Block(double width = 40, double height = 30, double depth = 10) {
  return Extrude(41, Front(), Rectangle(1, 0, 0, width, height), {.depth = depth});
}

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
  const json cube = Block(10, 10, 10);
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
  expect(Block(), rim_edge, 3, 40 * 30 * 10 - kCorner * 9 * 40, "cylinder", 1);
  const Edges uprights{"41:side:1|41:side:2", "41:side:2|41:side:3", "41:side:3|41:side:4",
                       "41:side:1|41:side:4"};
  expect(Block(), uprights, 5, 40 * 30 * 10 - 4 * kCorner * 25 * 10, "cylinder", 4);
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
    return Keys(Built({Block(width), Round(at_corner, radius)})["faces"]);
  };
  const auto small = keys(40, 1);
  EXPECT_EQ(
      std::vector<std::string>(small.begin() + 6, small.end()),
      (std::vector<std::string>{"50:round:(41:end|41:side:1)", "50:round:(41:end|41:side:2)",
                                "50:round:(41:side:1|41:side:2)", "50:corner:(41:end|41:side:1|41:side:2)"}));
  EXPECT_EQ(keys(25, 4), small);
  // A round can be rounded where it ends.
  const std::string edge = "41:side:4|50:round:(41:end|41:side:1)";
  const json again = Built({Block(), Round({"41:end|41:side:1"}, 3), Round({edge}, 1, true, 60)});
  EXPECT_GT(FaceNamed(again, "60:round:(" + edge + ")")["area"].get<double>(), 0);
}

TEST(Round, IsRefusedWhereItDoesNotFit) {
  const json cube = Block(10, 10, 10);
  const json slot = Extrude(41, Front(), Slot(1, 15, 10));
  // A hole from below whose end is 1 behind the wall and 2 under the top. A round of 8 about (8, 12) meets
  // it: (1, 18) is √(7² + 6²) = 9.2 from there.
  const json hole =
      Extrude(45, Front(), {Circle(1, 20, 2.5, 1.5)}, {.operation = "cut", .mode = "blind", .depth = 18});
  const Edges opposite{"41:end|41:side:1", "41:end|41:side:3"};
  const std::string no_room = "The body has no room for the round.";
  const auto expect = [](Recipes recipes, const json& round, const std::string& reason) {
    const double standing = Volume(Built(recipes));
    recipes.push_back(round);
    EXPECT_EQ(Reason(recipes), reason);
    ExpectClose(Volume(Regenerate(recipes)), standing);
  };
  const Edges edge{"41:end|41:side:1"};
  expect({cube}, Round(AllEdges(cube), 5.0001), no_room);
  expect({cube}, Round(opposite, 5), no_room);
  expect({cube}, Round(edge, 12), no_room);
  expect({Block(40, 30, 20), hole}, Round(edge, 8), no_room);
  expect({cube}, Round(edge, 0), "The radius must be above 0.");
  expect({cube}, Round({"41:end|41:side:9"}, 1), "The body has no edge 41:end|41:side:9.");
  expect({slot}, Round(edge, 1, false), "The round would run on to edge 41:end|41:side:2.");
  expect({slot}, Round({"41:side:1|41:side:2"}, 1),
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
      {"equal", Block(), {"41:end|41:side:1"}, Equal(3), 12000 - 9.0 / 2 * 40},
      {"two", Block(), {"41:end|41:side:1"}, Two(4, 2, "41:end"), 12000 - 4.0 * 2 / 2 * 40},
      {"angle", Block(), {"41:end|41:side:1"}, Angle(4, 30, "41:end"), 12000 - 4 * 4 * tan30 / 2 * 40},
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
    const json part = Built({Block(), Chamfer({"41:end|41:side:1"}, one.legs)});
    ExpectClose(FaceNamed(part, "41:end")["area"].get<double>(), one.top, one.legs.dump());
    ExpectClose(FaceNamed(part, "41:side:1")["area"].get<double>(), one.side, one.legs.dump());
  }
  // An edge that isn't on it is measured from the older of its faces: 4 of side:3, 2 of side:4.
  const json part =
      Built({Block(), Chamfer({"41:end|41:side:1", "41:side:3|41:side:4"}, Two(4, 2, "41:end"))});
  ExpectClose(FaceNamed(part, "41:side:3")["area"].get<double>(), (40 - 4) * 10);
}

TEST(Chamfer, IsNamedAfterItsEdges) {
  const Edges edges{"41:end|41:side:1", "41:side:3|41:side:4"};
  const auto keys = Keys(Built({Block(), Chamfer(edges, Equal(1))})["faces"]);
  EXPECT_EQ(std::vector<std::string>(keys.begin() + 6, keys.end()),
            (std::vector<std::string>{"50:chamfer:(41:end|41:side:1)", "50:chamfer:(41:side:3|41:side:4)"}));
  EXPECT_EQ(Keys(Built({Block(), Chamfer(edges, Two(2, 3, "41:end"))})["faces"]), keys);
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
    EXPECT_EQ(Reason({Block(), Chamfer({edge}, legs)}), reason) << legs;
}

}  // namespace
}  // namespace bench::kernel::testing

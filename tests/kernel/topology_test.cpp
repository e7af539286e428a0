// Faces, edges and contours of a part, and the keys by which they are known.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

using Vector = std::vector<double>;

Vector Coordinates(const json& value) {
  return value.get<Vector>();
}

double Dot(const Vector& a, const Vector& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector Minus(const Vector& a, const Vector& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

// A plate of 40 · 30 · 10 with a hole of radius 4 in (15, 12).
Recipes Plate() {
  return {Extrude(1, Front(), Rectangle(1, 0, 0, 40, 30)),
          Extrude(2, Front(), {Circle(7, 15, 12, 4)}, {.operation = "cut", .mode = "through_all"})};
}

TEST(Face, TellsWhatItsSurfaceIs) {
  const json part = Built(Plate());
  const json hole = FaceNamed(part, "2:side:7");
  EXPECT_EQ(hole["type"], "cylinder");
  EXPECT_EQ(hole["feature"], 2);
  ExpectClose(hole["area"].get<double>(), 2 * kPi * 4 * 10);
  ExpectClose(hole["radius"].get<double>(), 4);
  ExpectClose(std::abs(hole["axis"][2].get<double>()), 1);
  EXPECT_EQ(hole["orientation"], -1);  // the cylinder's normal points into the material
  ExpectClose(Box(hole), {11, 8, 0, 19, 16, 10});
  ExpectClose(hole["u"][1].get<double>() - hole["u"][0].get<double>(), 2 * kPi);
  ExpectClose(hole["v"][1].get<double>() - hole["v"][0].get<double>(), 10);

  const json top = FaceNamed(part, "1:end");
  ExpectClose(top["area"].get<double>(), 1200 - 16 * kPi);
  ExpectClose(top["normal"], {0, 0, 1});
  ExpectClose(FaceNamed(part, "1:side:2")["normal"], {1, 0, 0});
}

// The frames and normals as the protocol puts them together.
void CheckFrame(const json& face) {
  const std::string type = face["type"];
  const Vector normal = Coordinates(face["normal"]), axis = Coordinates(face["axis"]);
  const Vector from = Minus(Coordinates(face["point"]), Coordinates(face["origin"]));
  const double along = Dot(from, axis);
  Vector out = from;
  for (int i = 0; i < 3; ++i) out[i] -= along * axis[i];
  const double away = std::sqrt(Dot(out, out));
  const double turned = face["orientation"].get<int>();
  if (type == "plane") {
    ExpectClose(along, 0, type);
    ExpectClose(Dot(normal, axis), turned, type);
  } else if (type == "cylinder") {
    ExpectClose(away, face["radius"], type);
    ExpectClose(Dot(normal, out), turned * away, type);
  } else if (type == "cone") {
    const double half_angle = face["half_angle_deg"].get<double>() * kPi / 180;
    EXPECT_GT(half_angle, 0);
    ExpectClose(away, face["radius"].get<double>() + along * std::tan(half_angle), type);
    EXPECT_GT(Dot(normal, out) * turned, 0);
  } else if (type == "sphere") {
    ExpectClose(Dot(normal, from), turned * face["radius"].get<double>(), type);
  } else {
    ASSERT_EQ(type, "torus");
    ExpectClose(std::hypot(away - face["radius"].get<double>(), along), face["minor_radius"], type);
  }
}

TEST(Face, HasAFrameThatFitsItsPoint) {
  const Entities half_ring = {Arc(1, 20, 0, 4, 0, kPi), Line(2, 16, 0, 24, 0), Centerline(9, 0, 0, 0, 1)};
  const json parts[] = {
      Extrude(1, Top(), Slot(1, 10, 5), {.taper_deg = 10}),
      Extrude(1, Right(), Together(Rectangle(1, -9, -9, 18, 18), Circle(11, 0, 0, 5)), {.reverse = true}),
      Revolve(1, Top(), half_ring, 360, "join", true),
      Revolve(1, Front(), HalfDisc(), 200),
  };
  for (const json& recipe : parts) {
    const json part = Built({recipe});
    for (const json& face : part["faces"]) CheckFrame(face);
  }
}

TEST(Face, HasItsPointInsideTheMaterialsEdge) {
  // A frame so thin that the middle of its faces is nothing.
  const json frame = Built({Extrude(
      1, Front(), Together(Rectangle(1, 0, 0, 100, 100), Rectangle(11, 1, 1, 98, 98)), {.depth = 3})});
  for (const char* key : {"1:start", "1:end"}) {
    const Vector point = Coordinates(FaceNamed(frame, key)["point"]);
    const double edge = std::min({point[0], point[1], 100 - point[0], 100 - point[1]});
    EXPECT_NEAR(edge, 0.5, 0.4) << key;
  }
}

TEST(Face, TellsTheKindOfASweptSurface) {
  const json wall = Built({Extrude(1, Front(), {Ellipse(1, 0, 0, 9, 4)})});
  EXPECT_EQ(FaceNamed(wall, "1:side:1")["type"], "extruded");
  ExpectClose(std::abs(FaceNamed(wall, "1:side:1")["axis"][2].get<double>()), 1);
  const json ring = Built({Revolve(1, Front(), {Ellipse(1, 20, 0, 9, 4), Centerline(2, 0, 0, 0, 1)}, 360)});
  EXPECT_EQ(FaceNamed(ring, "1:side:1")["type"], "revolved");
  ExpectClose(FaceNamed(ring, "1:side:1")["axis"], {0, 1, 0});
}

TEST(Edge, TellsItsFacesAndItsCurve) {
  const json part = Built(Plate());
  EXPECT_EQ(part["edges"].size(), 14u);  // twelve of the block, two of the hole and no seam
  const json rim = Named(part["edges"], "1:end|2:side:7");
  EXPECT_EQ(rim["faces"], (json::array({"1:end", "2:side:7"})));
  EXPECT_EQ(rim["feature"], 2);
  EXPECT_EQ(rim["type"], "circle");
  ExpectClose(rim["length"].get<double>(), 8 * kPi);
  EXPECT_EQ(rim["from"], rim["to"]);
  ExpectClose(rim["center"], {15, 12, 10});
  const json side = Named(part["edges"], "1:start|1:side:1");
  EXPECT_EQ(side["type"], "line");
  ExpectClose(side["from"], {0, 0, 0});
  ExpectClose(side["to"], {40, 0, 0});
  ExpectClose(side["length"].get<double>(), 40);
}

TEST(Edge, RunsRightHandedAboutTheAxisOfItsArc) {
  // A quarter of the way around and then another one lies the other end.
  const json slot = Built({Extrude(1, Front(), Slot(1, 10, 5))});
  int arcs = 0;
  for (const json& edge : slot["edges"]) {
    if (edge["type"] != "circle") continue;
    ++arcs;
    const Vector center = Coordinates(edge["center"]), axis = Coordinates(edge["axis"]);
    const Vector arm = Minus(Coordinates(edge["from"]), center);
    // With the axis along z the middle of the arc is center + axis × arm: 5 beyond a centre at x = ± 10.
    ExpectClose(std::abs(center[0] - axis[2] * arm[1]), 15);
    ExpectClose(edge["length"].get<double>(), 5 * kPi);
  }
  EXPECT_EQ(arcs, 4);
}

using Contour = std::vector<std::string>;

std::vector<Contour> ContoursOf(const json& part, const std::string& face) {
  return FaceNamed(part, face)["contours"].get<std::vector<Contour>>();
}

// A cylinder with a hole across it: wherever the seam of its wall lies, the hole breaks through it or
// opposite of it.
Recipes CrossedCylinder() {
  return {Extrude(1, Front(), {Circle(1, 0, 0, 10)}, {.depth = 40}),
          Extrude(2, Right(), {Circle(1, -20, 0, 3)}, {.operation = "cut", .mode = "symmetric", .depth = 30}),
          Extrude(3, Top(), {Circle(1, 0, -10, 3)}, {.operation = "cut", .mode = "symmetric", .depth = 30})};
}

// Two blocks that touch along an edge.
Recipes TouchingBlocks() {
  return {Extrude(1, Front(), Rectangle(1, 0, 0, 10, 10)), Extrude(2, Front(), Rectangle(1, 10, 10, 10, 10))};
}

TEST(Contours, OfAPlaneFaceAreItsOutlineAndThenItsHoles) {
  const auto contours = ContoursOf(Built(Plate()), "1:end");
  ASSERT_EQ(contours.size(), 2u);
  EXPECT_EQ(contours[1], Contour{"1:end|2:side:7"});

  // Once around the sides 1, 2, 3, 4, one way or the other: opposite ones are two steps apart.
  ASSERT_EQ(contours[0].size(), 4u);
  const auto place = [&](const std::string& edge) {
    return std::ranges::find(contours[0], edge) - contours[0].begin();
  };
  EXPECT_EQ(std::abs(place("1:end|1:side:1") - place("1:end|1:side:3")), 2);
  EXPECT_EQ(std::abs(place("1:end|1:side:2") - place("1:end|1:side:4")), 2);
}

TEST(Contours, LeaveTheSeamOut) {
  // Two rims, and four places where the holes break through, of which one lies across the seam.
  EXPECT_EQ(ContoursOf(Built(Plate()), "2:side:7").size(), 2u);
  EXPECT_EQ(ContoursOf(Built(CrossedCylinder()), "1:side:1").size(), 6u);
  EXPECT_TRUE(ContoursOf(Built({Revolve(1, Top(), HalfDisc(), 360)}), "1:side:1").empty());
}

TEST(Contours, HaveEachEdgeOnceOnEachOfItsFaces) {
  for (const Recipes& recipes : {Plate(), CrossedCylinder(), TouchingBlocks()}) {
    const json part = Built(recipes);
    std::map<std::pair<std::string, std::string>, int> times;
    for (const json& face : part["faces"])
      for (const json& contour : face["contours"])
        for (const json& edge : contour) ++times[{face["key"], edge}];
    for (const json& edge : part["edges"])
      for (const json& face : edge["faces"])
        EXPECT_EQ((times[{face, edge["key"]}]), 1) << face << " " << edge["key"];
    EXPECT_EQ(times.size(), 2 * part["edges"].size());
  }
}

std::set<std::string> KeySet(const json& list) {
  const auto keys = Keys(list);
  std::set<std::string> set(keys.begin(), keys.end());
  EXPECT_EQ(set.size(), keys.size()) << "a key came twice";
  return set;
}

bool Includes(const std::set<std::string>& all, const std::set<std::string>& some) {
  return std::includes(all.begin(), all.end(), some.begin(), some.end());
}

TEST(Keys, StayWhenAFeatureIsAppendedOrANumberChanges) {
  const auto holed = [](double depth, double radius) {
    return Built(
        {Extrude(41, Front(), Rectangle(1, 0, 0, 40, 30), {.depth = depth}),
         Extrude(50, Front(), {Circle(5, 20, 15, radius)}, {.operation = "cut", .mode = "through_all"})});
  };
  const json before = Built({Brick()}), small = holed(10, 3), large = holed(25, 9);
  const json boss = Built({Brick(), Extrude(50, FrontAt(10), {Circle(5, 20, 15, 3)})});
  for (const char* const list : {"faces", "edges"}) {
    EXPECT_TRUE(Includes(KeySet(small[list]), KeySet(before[list]))) << list;
    EXPECT_TRUE(Includes(KeySet(boss[list]), KeySet(before[list]))) << list;
    EXPECT_EQ(KeySet(small[list]), KeySet(large[list])) << list;
  }
}

TEST(Keys, NumberThePartsOfASplitFaceByTheirCentres) {
  // A groove x 10..20 all along Y splits the top; the narrower strip lies at the smaller x.
  const json part = Built({Brick(), Extrude(50, FrontAt(10), Rectangle(1, 10, -1, 10, 40),
                                            {.operation = "cut", .depth = 4, .reverse = true})});
  ExpectClose(FaceNamed(part, "41:end")["area"].get<double>(), 10 * 30);
  ExpectClose(FaceNamed(part, "41:end#2")["area"].get<double>(), 20 * 30);
  // The sides keep their names, each with the groove's profile cut from it.
  ExpectClose(FaceNamed(part, "41:side:1")["area"].get<double>(), 400 - 40);
  // The groove's end lies furthest in its direction: it is the floor.
  ExpectClose(FaceNamed(part, "50:end")["area"].get<double>(), 300);
  const auto edges = KeySet(part["edges"]);
  EXPECT_TRUE(edges.count("41:end|41:side:1"));
  EXPECT_TRUE(edges.count("41:end#2|41:side:1"));
}

TEST(Keys, OfTheOlderFeatureHoldWhereFacesMerge) {
  // A second block flush with the first on three sides.
  const json part = Built({Brick(), Extrude(50, Front(), Rectangle(1, 40, 0, 20, 30))});
  EXPECT_EQ(KeySet(part["faces"]), (std::set<std::string>{"41:start", "41:end", "41:side:1", "41:side:3",
                                                          "41:side:4", "50:side:2"}));
  ExpectClose(FaceNamed(part, "41:end")["area"].get<double>(), 60 * 30);
  EXPECT_EQ(part["edges"].size(), 12u);
}

TEST(Keys, OfTheFirstEntityHoldWhereSidesOfOneSectionMerge) {
  // The lower side is drawn in two lines; a feature behind it must find one face as well.
  const json angle = Extrude(41, Front(), Polygon(1, {{0, 0}, {5, 0}, {10, 0}, {10, 10}, {0, 10}}));
  const std::set<std::string> faces{"41:start", "41:end", "41:side:1", "41:side:3", "41:side:4", "41:side:5"};
  EXPECT_EQ(KeySet(Built({angle})["faces"]), faces);
  const json more = Built({angle, Extrude(50, FrontAt(10), {Circle(1, 5, 5, 2)})});
  EXPECT_TRUE(Includes(KeySet(more["faces"]), faces));
}

}  // namespace
}  // namespace bench::kernel::testing

// Extrusions: directions, depths, what they meet, tapered walls.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

// Two plates of 40 · 40, z 0..10 and 30..40, and a wall x 0..5 between them: 16000 + 16000 + 5 · 40 · 20.
Recipes Rack() {
  return {Extrude(1, Front(), Rectangle(1, 0, 0, 40, 40)),
          Extrude(2, FrontAt(10), Rectangle(1, 0, 0, 5, 40), {.depth = 20}),
          Extrude(3, FrontAt(30), Rectangle(1, 0, 0, 40, 40))};
}
constexpr double kRack = 36000;

// The rack with a post or a pit of 10 · 10 from that height.
Recipes RackWith(double z, const Extrusion& how) {
  Recipes recipes = Rack();
  recipes.push_back(Extrude(4, FrontAt(z), Rectangle(1, 20, 20, 10, 10), how));
  return recipes;
}

TEST(ExtrudeToBody, JoinsAndCutsUpToItsSurfaces) {
  ExpectClose(Volume(Built(Rack())), kRack);
  struct Case {
    const char* what;
    double z;
    Extrusion how;
    double change;  // in heights of a post of 100 mm²
  };
  const Case cases[] = {
      {"a post to the lower plate", 15, {.mode = "to_next", .reverse = true}, 5},
      {"a post from plate to plate", 10, {.mode = "to_next"}, 20},
      {"a foot and a post through all", -5, {.mode = "through_all"}, 5 + 20},
      {"nothing to add inside the upper plate", 32, {.mode = "through_all"}, 0},
      {"a hole through the lower plate alone", -5, {.operation = "cut", .mode = "to_next"}, -10},
      {"what is left of the lower plate above the section", 4, {.operation = "cut", .mode = "to_next"}, -6},
      {"a hole from above", 50, {.operation = "cut", .mode = "to_next", .reverse = true}, -10},
      {"a hole through both plates", 0, {.operation = "cut", .mode = "through_all"}, -20},
      {"a pit of two depths", 35, {.operation = "cut", .mode = "two", .depth = 1, .depth2 = 2}, -3},
  };
  for (const Case& one : cases) {
    const json part = Built(RackWith(one.z, one.how));
    ExpectClose(Volume(part), kRack + 100 * one.change, one.what);
    EXPECT_EQ(part["bodies"], 1) << one.what;
  }
}

TEST(ExtrudeToBody, IsRefusedWhereNoSurfaceIsMet) {
  const auto beside = [](const Extrusion& how) {
    Recipes recipes = Rack();
    recipes.push_back(Extrude(4, FrontAt(5), Rectangle(1, 100, 0, 10, 10), how));
    return recipes;
  };
  const auto alone = [](const Extrusion& how) {
    return Recipes{Extrude(4, Front(), Rectangle(1, 0, 0, 9, 9), how)};
  };
  const std::pair<const char*, Recipes> cases[] = {
      {"There is no body that the section could meet.", alone({.mode = "to_next"})},
      {"There is no body to cut.", alone({.operation = "cut"})},
      {"The section meets no body in its direction.",
       RackWith(40, {.operation = "cut", .mode = "through_all"})},
      {"The section meets no next surface in its direction.", beside({.mode = "to_next"})},
      {"The body does not bound the section in its direction.", beside({.mode = "through_all"})},
      {"The section meets no body in its direction.", beside({.operation = "cut", .mode = "to_next"})},
      {"The cut removes nothing from the body.", beside({.operation = "cut"})},
      {"There is no room between the section and the body.", RackWith(5, {.mode = "to_next"})},
  };
  for (const auto& [reason, recipes] : cases) EXPECT_EQ(Reason(recipes), reason);
}

TEST(ExtrudeCut, IsRefusedWhenItTouchesTheBodyOnlyOrTakesAllOfIt) {
  const auto part = [&](double x, double y, double size, double depth) {
    return Regenerate(
        {Extrude(1, Front(), Rectangle(1, 0, 0, 10, 10)),
         Extrude(2, Front(), Rectangle(1, x, y, size, size), {.operation = "cut", .depth = depth})});
  };
  const json beside = part(10, 2, 5, 10), whole = part(-5, -5, 20, 20);
  EXPECT_EQ(beside["features"][1]["reason"], "The cut removes nothing from the body.");
  EXPECT_EQ(whole["features"][1]["reason"], "The cut removes the whole body.");
  // What is refused leaves the body to those behind it.
  ExpectClose(Volume(beside), 1000);
  ExpectClose(Volume(whole), 1000);
}

TEST(ExtrudeCut, RemovesAScratchFromALargeBody) {
  // 0.1 mm³ of 1e9 mm³ are less than the 1e-6 to which volumes are compared.
  const json part =
      Built({Extrude(1, Front(), Rectangle(1, 0, 0, 1000, 1000), {.depth = 1000}),
             Extrude(2, Front(), Rectangle(1, 10, 10, 1, 1), {.operation = "cut", .depth = 0.1})});
  EXPECT_EQ(part["faces"].size(), 11u);  // six of the block, four walls and a floor
}

TEST(ExtrudeDepth, MustBeAboveZero) {
  const auto reason = [](const Extrusion& how) {
    return Reason({Extrude(1, Front(), Rectangle(1, 0, 0, 5, 5), how)});
  };
  EXPECT_EQ(reason({.depth = 0}), "The depth must be above 0.");
  EXPECT_EQ(reason({.mode = "two", .depth = 0, .depth2 = 0}), "The depth must be above 0.");
  EXPECT_EQ(reason({.mode = "two", .depth = 3, .depth2 = -1}), "Neither of the two depths may be below 0.");
  EXPECT_EQ(reason({.depth = 1e9}), "The depth is too large.");
}

TEST(ExtrudeJoin, KeepsBodiesThatDoNotMeetApart) {
  const json first = Extrude(1, Front(), Rectangle(1, 0, 0, 10, 10));
  const json second = Extrude(2, Front(), Rectangle(1, 20, 0, 5, 10));
  const json apart = Built({first, second});
  EXPECT_EQ(apart["bodies"], 2);
  ExpectClose(Volume(apart), 1000 + 500);
  const json bridged = Built({first, second, Extrude(3, Front(), Rectangle(1, 5, 4, 18, 2), {.depth = 5})});
  EXPECT_EQ(bridged["bodies"], 1);
  ExpectClose(Volume(bridged), 1500 + 10 * 2 * 5);  // the bridge spans x 10..20 between the two
}

// How far a wall leans in over a depth of 10.
double Lean(double taper_deg) {
  return 10 * std::tan(taper_deg * kPi / 180);
}

// The mean of an area that is quadratic in the depth, over the whole depth: Simpson's rule is exact for it.
double Frustum(double depth, double near, double middle, double far) {
  return depth * (near + 4 * middle + far) / 6;
}

TEST(Taper, GivesTheFrustumOfARectangleAndOfACircle) {
  for (const double taper : {10.0, -10.0, 30.0, 0.5}) {
    const double t = Lean(taper);
    const json rectangle = Built({Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30), {.taper_deg = taper})});
    ExpectClose(Volume(rectangle), Frustum(10, 600, (20 - t) * (30 - t), (20 - 2 * t) * (30 - 2 * t)));
    const json circle = Built({Extrude(1, Front(), {Circle(1, 0, 0, 10)}, {.taper_deg = taper})});
    ExpectClose(Volume(circle), kPi * 10 / 3 * (100 + 10 * (10 - t) + (10 - t) * (10 - t)));
    EXPECT_EQ(FaceNamed(circle, "1:side:1")["type"], "cone");
    ExpectClose(FaceNamed(circle, "1:side:1")["half_angle_deg"].get<double>(), std::abs(taper));
  }
}

TEST(Taper, WidensAHoleWhereItNarrowsTheWallsAndNarrowsACut) {
  const double t = Lean(10);
  const auto cone = [](double r1, double r2) { return kPi * 10 / 3 * (r1 * r1 + r1 * r2 + r2 * r2); };
  const json ring = Extrude(1, Front(), {Circle(1, 0, 0, 10), Circle(2, 0, 0, 5)}, {.taper_deg = 10});
  ExpectClose(Volume(Built({ring})), cone(10, 10 - t) - cone(5, 5 + t));
  const json cut = Extrude(2, Front(), {Circle(1, 0, 0, 4)}, {.operation = "cut", .taper_deg = 10});
  const json block = Extrude(1, Front(), Rectangle(1, -20, -20, 40, 40));
  ExpectClose(Volume(Built({block, cut})), 16000 - cone(4, 4 - t));
}

TEST(Taper, IsRefusedWhereTheSectionCollapses) {
  const char* const kCollapse = "The section collapses before its depth is reached.";
  const char* const kMeet = "The drafted walls run into each other before the depth is reached.";
  const Entities ring = Together(Rectangle(1, -10, -10, 20, 20), Circle(11, 0, 0, 5));
  const Entities islands = Together(Rectangle(1, 0, 0, 10, 10), Rectangle(11, 12, 0, 10, 10));
  struct Case {
    Entities entities;
    double depth, taper_deg;
    const char* reason;
  };
  // At 45 degrees a wall leans in by the depth.
  const Case cases[] = {
      {Rectangle(1, 0, 0, 20, 30), 9, 45, ""},
      {Rectangle(1, 0, 0, 20, 30), 10, 45, kCollapse},
      {Slot(1, 10, 5), 4, 45, ""},
      {Slot(1, 10, 5), 6, 45, kCollapse},
      {ring, 2, 45, ""},
      {ring, 3, 45, kMeet},
      {ring, 4, -45, ""},
      {ring, 6, -45, kCollapse},
      {islands, 0.9, -45, ""},
      {islands, 1.1, -45, kMeet},
      {Rectangle(1, 0, 0, 20, 30), 1, 90, "The taper must be between -90 and 90 degrees."},
      {{Ellipse(1, 0, 0, 10, 5)}, 1, 5, "The wall of entity 1 can't be drafted."},
  };
  for (const Case& one : cases) {
    const Extrusion how{.depth = one.depth, .taper_deg = one.taper_deg};
    EXPECT_EQ(Reason({Extrude(1, Front(), one.entities, how)}), one.reason)
        << one.depth << " " << one.taper_deg;
  }
}

}  // namespace
}  // namespace bench::kernel::testing

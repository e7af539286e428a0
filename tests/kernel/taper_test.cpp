#include <gtest/gtest.h>

#include <cmath>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

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

TEST(Taper, NarrowsBothHalvesAwayFromThePlane) {
  const double t = Lean(10);
  const double half = kPi * 10 / 3 * (100 + 10 * (10 - t) + (10 - t) * (10 - t));
  const json symmetric = Built(
      {Extrude(1, Front(), {Circle(1, 0, 0, 10)}, {.mode = "symmetric", .depth = 20, .taper_deg = 10})});
  ExpectClose(Volume(symmetric), 2 * half);
  ExpectClose(symmetric["mass"]["center"], {0, 0, 0});
  EXPECT_EQ(Keys(symmetric["faces"]),
            (std::vector<std::string>{"1:start", "1:end", "1:side:1", "1:side:1#2"}));

  // 10 ahead of the plane and 5 behind it, where the walls lean in by half as much.
  const double small = 10 - t / 2;
  const json two = Built({Extrude(1, Front(), {Circle(1, 0, 0, 10)},
                                  {.mode = "two", .depth = 10, .depth2 = 5, .taper_deg = 10})});
  ExpectClose(Volume(two), half + kPi * 5 / 3 * (100 + 10 * small + small * small));
  ExpectClose(FaceNamed(two, "1:start")["point"], {0, 0, -5});
  ExpectClose(FaceNamed(two, "1:end")["point"], {0, 0, 10});
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

TEST(Taper, DraftsTangentWallsTogether) {
  const double t = Lean(10);
  const auto slot = [](double r) { return 20 * 2 * r + kPi * r * r; };
  const json part = Built({Extrude(1, Front(), Slot(1, 10, 5), {.taper_deg = 10})});
  ExpectClose(Volume(part), Frustum(10, slot(5), slot(5 - t / 2), slot(5 - t)));
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

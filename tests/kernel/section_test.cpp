#include <gtest/gtest.h>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

TEST(Section, BoundsTheAreaOfItsLoops) {
  struct Case {
    const char* what;
    Entities entities;
    double area;
    int bodies;
  };
  const Case cases[] = {
      {"an arc of more than a turn", {Arc(1, 0, 0, 5, 1, 1 + 2.5 * kPi)}, kPi * 25, 1},
      {"an arc that runs through the angle 0",
       {Arc(1, 0, 0, 2, 1.5 * kPi, 0.5 * kPi), Line(2, 0, 2, 0, -2)},
       kPi * 2,
       1},
      {"a tall ellipse", {Ellipse(1, 0, 0, 3, 8)}, kPi * 24, 1},
      {"a plate with a round and a square hole",
       Together(Rectangle(1, 0, 0, 40, 20), Circle(11, 10, 10, 3), Rectangle(21, 25, 5, 10, 10)),
       800 - kPi * 9 - 100, 1},
      {"an island in a hole",
       Together(Rectangle(1, 0, 0, 40, 40), Circle(11, 20, 20, 15), Rectangle(21, 15, 15, 10, 10)),
       1600 - kPi * 225 + 100, 2},
      {"sides in any order and direction",
       {Line(4, 0, 0, 0, 5), Line(2, 5, 5, 5, 0), Line(1, 0, 0, 5, 0), Line(3, 5, 5, 0, 5)},
       25,
       1},
      {"a quarter circle with a corner given to six digits",
       {Line(1, 0, 0, 10, 0), Arc(2, 0, 0, 10, 0, kPi / 4), Line(3, 7.071068, 7.071068, 0, 0)},
       kPi * 100 / 8,
       1},
      // The wave is its own mirror image about (10, 0): what it adds to the left it takes off to the right.
      {"a spline wave over a strip",
       {Spline(1, {{0, 0}, {5, 2}, {10, 0}, {15, -2}, {20, 0}}), Line(2, 20, 0, 20, 6), Line(3, 20, 6, 0, 6),
        Line(4, 0, 6, 0, 0)},
       120,
       1},
  };
  for (const Case& one : cases) {
    const json part = Built({Extrude(1, Front(), one.entities, {.depth = 10})});
    EXPECT_NEAR(Volume(part), 10 * one.area, 2e-6 * 10 * one.area) << one.what;
    EXPECT_EQ(part["bodies"], one.bodies) << one.what;
  }
}

TEST(Section, IgnoresWhatBoundsNothing) {
  const json part =
      Built({Extrude(1, Front(),
                     Together(Rectangle(1, 0, 0, 10, 10), Point(11, 3, 3), Centerline(12, 5, -5, 5, 20),
                              AsConstruction(Circle(13, 5, 5, 2)), AsConstruction(Line(14, 0, 0, 30, 30))))});
  ExpectClose(Volume(part), 1000);
}

TEST(Section, IsRefusedWithTheReason) {
  const Entities square = Rectangle(1, 0, 0, 10, 10);
  const std::pair<const char*, Entities> cases[] = {
      {"The section has no curves that bound an area.", {AsConstruction(Circle(1, 0, 0, 5)), Point(2, 0, 0)}},
      {"The section is open at (10, 10).", {Line(1, 10, 10, 0, 0), Line(2, 0, 0, 10, 0)}},
      {"The section is open at (5, 0).", {Arc(1, 0, 0, 5, 0, kPi)}},
      {"Entities 1 and 3 of the section meet at (5, 5).", Polygon(1, {{0, 0}, {10, 10}, {10, 0}, {0, 10}})},
      {"Entities 2 and 11 of the section meet at (10, 5).", Together(square, Rectangle(11, 5, 5, 10, 10))},
      {"Entities 1 and 11 of the section meet at (5, 0).", Together(square, Circle(11, 5, 5, 5))},
      {"Entities 1 and 2 of the section meet at (5, 0).", Polygon(1, {{0, 0}, {10, 0}, {5, 0}, {5, 5}})},
      {"Entities 1 and 2 of the section meet at (5, 0).", {Circle(1, 0, 0, 5), Circle(2, 10, 0, 5)}},
      {"More than two ends of the section meet at (10, 10).", Together(square, Rectangle(11, 10, 10, 5, 5))},
      {"Entity 5 is a line without length.", Together(square, AsConstruction(Line(5, 3, 3, 3, 3)))},
      {"Entity 5 is a line without length.", Together(square, Centerline(5, 3, 3, 3, 3))},
      {"Entity 5 needs a radius above 0.", {Circle(5, 0, 0, -2)}},
      {"Entity 5 needs a radius above 0.", {Ellipse(5, 0, 0, -3, 1)}},
      {"Entity 5 spans no angle.", {Arc(5, 0, 0, 3, 1, 1)}},
      {"Entity 5 is a spline through fewer than two points.", {Spline(5, {{1, 1}})}},
      {"Entity 5 is a spline through the same point twice in a row.", {Spline(5, {{1, 1}, {2, 2}, {2, 2}})}},
      {"Entity 5 is a closed spline through fewer than three points.", {Spline(5, {{1, 1}, {2, 2}, {1, 1}})}},
      {"Entity 5 lies too far away.", {Circle(5, 1e9, 0, 1)}},
      {"Entity 5 has too large a radius.", {Circle(5, 0, 0, 1e9)}},
  };
  for (const auto& [reason, entities] : cases) EXPECT_EQ(Reason({Extrude(1, Front(), entities)}), reason);
  const Entities loop = {Spline(1, {{0, 0}, {10, 0}, {14, 5}, {10, 8}, {7, 5}, {10, -3}, {12, -5}}),
                         Line(2, 12, -5, 0, -5), Line(3, 0, -5, 0, 0)};
  EXPECT_EQ(Reason({Extrude(1, Front(), loop)}).substr(0, 24), "Entity 1 meets itself at");
}

TEST(Section, TakesTangentJointsOfAnySizeForWhatTheyAre) {
  // A corner of a square of 1000 · 1000, rounded ever less, cuts off (4 - π) / 4 r².
  for (const double r : {400.0, 1.0, 0.01}) {
    const Entities section = {Line(1, 0, 0, 1000, 0), Line(2, 1000, 0, 1000, 1000 - r),
                              Arc(3, 1000 - r, 1000 - r, r, 0, kPi / 2), Line(4, 1000 - r, 1000, 0, 1000),
                              Line(5, 0, 1000, 0, 0)};
    const json part = Built({Extrude(1, Front(), section, {.depth = 1})});
    EXPECT_NEAR(Volume(part), 1e6 - (4 - kPi) / 4 * r * r, 1e-6) << r;
  }
}

}  // namespace
}  // namespace bench::kernel::testing

// Sections that are swept along a path or turned about an axis.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

json Sweep(int feature, const Entities& path, const Entities& section,
           const std::string& operation = "join") {
  return {{"feature", feature},
          {"kind", "sweep"},
          {"path", {{"plane", Front()}, {"entities", path}}},
          {"section", {{"entities", section}}},
          {"operation", operation}};
}

// 30 up and 20 to the right.
Entities Ell() {
  return {Line(1, 0, 0, 0, 30), Line(2, 0, 30, 20, 30)};
}

// 30 up, then a quarter of a circle to the right.
Entities Cane(double radius) {
  return {Line(1, 0, 0, 0, 30), Arc(2, radius, 30, radius, kPi / 2, kPi)};
}

TEST(Sweep, HasTheVolumeThatPappusTells) {
  const Entities round = {Circle(1, 0, 0, 2)};
  const Entities slab = Rectangle(1, 3, -1, 4, 2);
  const Entities tube = {Circle(1, 0, 0, 2), Circle(2, 0, 0, 1)};
  const Entities square = Polygon(1, {{0, 0}, {20, 0}, {20, 30}, {0, 30}});
  struct Case {
    const char* what;
    Entities path, section;
    double volume;
    std::size_t faces;
  };
  // Of a straight piece the length counts, of a bend the way of the section's middle. Up is the trajectory,
  // so the section's +y is FRONT's normal and its +x points to the left: the slab's middle is 5 left of the
  // path.
  const Case cases[] = {
      {"mitred", Ell(), round, 4 * kPi * 50, 4},
      // Outside of a mitred right turn, a path 5 to the left is longer by 2 × 5.
      {"mitred beside", Ell(), slab, 8 * (50 + 10), 8},
      {"bend", Cane(10), round, 4 * kPi * (30 + kPi / 2 * 10), 4},
      {"bend beside", Cane(10), slab, 8 * (30 + kPi / 2 * 15), 8},
      {"bend of a tube", Cane(10), tube, 3 * kPi * (30 + kPi / 2 * 10), 6},
      {"ring", {Circle(1, 5, 5, 10)}, round, 4 * kPi * 2 * kPi * 10, 1},
      // Counter-clockwise, left is inwards.
      {"ring beside", {Circle(1, 5, 5, 10)}, slab, 8 * 2 * kPi * 5, 4},
      {"frame", square, round, 4 * kPi * 100, 4},
      // Inside, each side is shorter by 2 × 5. What lies in two planes is two faces.
      {"frame beside", square, slab, 8 * (100 - 40), 10},
      {"track", Slot(1, 10, 6), round, 4 * kPi * (40 + 2 * kPi * 6), 4},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.what);
    const json part = Built({Sweep(1, one.path, one.section)});
    ExpectClose(Volume(part), one.volume);
    EXPECT_EQ(part["faces"].size(), one.faces);
  }
}

TEST(Sweep, FollowsFreeCurves) {
  const Entities round = {Circle(1, 0, 0, 1)};
  // The circumference of an ellipse with the axes 20 and 10 (E is the complete elliptic integral): 4 · 20
  // E(3/4).
  const double around = 80 * std::comp_ellint_2(std::sqrt(0.75));
  const json ring = Built({Sweep(1, {Ellipse(1, 0, 0, 20, 10)}, round)});
  EXPECT_NEAR(Volume(ring), kPi * around, 1e-4 * kPi * around);
  // A spline through points of one line is that line.
  const json rod = Built({Sweep(1, {Spline(1, {{0, 0}, {0, 5}, {0, 12}, {0, 20}})}, round)});
  EXPECT_NEAR(Volume(rod), 20 * kPi, 1e-4 * 20 * kPi);
}

TEST(Sweep, StartsAtTheFreeEndOfTheLowerEntityOnItsCrosshairs) {
  // 4 to the section's right and 2 up, about its origin: the section tells where it lies.
  const Entities section = Rectangle(1, 0, 0, 4, 2);
  const auto expect = [&](const Entities& path, const json& x_reference, const std::vector<double>& box) {
    json sweep = Sweep(1, path, section);
    if (!x_reference.is_null()) sweep["x_reference"] = x_reference;
    ExpectClose(Box(Built({sweep})["outline"]), box);
  };
  // Along +X the section's +y is +Z and its +x is y × tangent = +Y; backwards it is -Y.
  expect({Line(1, 0, 0, 10, 0)}, nullptr, {0, 0, 0, 10, 4, 2});
  expect({Line(1, 10, 0, 0, 0)}, nullptr, {0, -4, 0, 10, 0, 2});
  // From the lower id's free end.
  expect({Line(2, 0, 0, 4, 0), Line(5, 10, 0, 4, 0)}, nullptr, {0, 0, 0, 10, 4, 2});
  expect({Line(5, 0, 0, 4, 0), Line(2, 10, 0, 4, 0)}, nullptr, {0, -4, 0, 10, 0, 2});
  // With a start direction: +x along +Z makes +y tangent × x = -Y; and turned round.
  expect({Line(1, 0, 0, 10, 0)}, {0, 0, 1}, {0, -2, 0, 10, 0, 4});
  expect({Line(1, 0, 0, 10, 0)}, {1, 0, -1}, {0, 0, -4, 10, 2, 0});
}

TEST(Sweep, NamesItsFacesAfterSectionAndPath) {
  const json part = Built({Sweep(7, Cane(10), {Circle(3, 0, 0, 2)})});
  EXPECT_EQ(Keys(part["faces"]), (std::vector<std::string>{"7:start", "7:end", "7:side:3:1", "7:side:3:2"}));
  EXPECT_EQ(FaceNamed(part, "7:side:3:1")["type"], "cylinder");
  EXPECT_EQ(FaceNamed(part, "7:side:3:2")["type"], "torus");
  ExpectClose(FaceNamed(part, "7:start")["normal"], {0, -1, 0});
  ExpectClose(FaceNamed(part, "7:end")["normal"], {1, 0, 0});
}

TEST(Sweep, CutsItsWay) {
  // A groove of 2 × 2 from the left to the right end of a block 40 wide.
  const json block = Extrude(1, Front(), Rectangle(1, 0, 0, 40, 20));
  const Entities path = {Line(1, 0, 10, 40, 10)};
  const json part = Built({block, Sweep(2, path, Rectangle(1, -1, -1, 2, 2), "cut")});
  // The block is 10 high; half of the groove lies below it.
  ExpectClose(Volume(part), 40 * 20 * 10 - 40 * 2 * 1);
  EXPECT_EQ(Reason({Sweep(1, path, {Circle(1, 0, 0, 1)}, "cut")}), "There is no body to cut.");
}

TEST(Sweep, IsRefusedWithTheReason) {
  const Entities round = {Circle(1, 0, 0, 2)};
  const auto reason = [&](const Entities& path) { return Reason({Sweep(1, path, round)}); };
  EXPECT_EQ(reason({AsConstruction(Line(1, 0, 0, 5, 0)), Point(2, 0, 0)}), "The trajectory has no curve.");
  EXPECT_EQ(reason({Line(1, 0, 0, 5, 0), Line(2, 6, 0, 9, 0)}),
            "The trajectory's curves don't hang together in one chain.");
  EXPECT_EQ(reason({Line(1, 0, 0, 5, 0), Line(2, 5, 0, 9, 0), Line(3, 5, 0, 5, 9)}),
            "The trajectory branches at an end of entity 1.");
  EXPECT_EQ(reason({Line(1, 0, 0, 9, 0), Line(2, 5, -5, 5, 5)}),
            "The trajectory meets itself at entities 1 and 2.");
  EXPECT_EQ(reason({Line(1, 0, 0, 30, 0), Arc(2, 40, 0, 10, 0, kPi)}),
            "The corner between the trajectory's entities 1 and 2 can't be mitred.");
  EXPECT_EQ(reason(Cane(1.5)), "The section is too wide for the bend of the trajectory's entity 2.");
  EXPECT_EQ(reason({Line(1, 0, 0, 1, 0), Line(2, 1, 0, 1, 30)}),
            "The section is too wide for the corners of the trajectory's entity 1.");
  EXPECT_EQ(reason({Ellipse(1, 0, 0, 9, 3)}),
            "The section is too wide for the bends of the trajectory's entity 1.");
  EXPECT_EQ(
      reason({Line(1, 0, 0, 30, 0), Line(2, 30, 0, 30, 30), Line(3, 30, 30, 3, 30), Line(4, 3, 30, 3, 1)}),
      "The sweep runs into itself.");
  json along = Sweep(1, Ell(), round);
  along["x_reference"] = {0, -1, 0};
  EXPECT_EQ(Reason({along}), "The start direction runs along the trajectory.");
}

// A rectangle x 10..15, y 0..4 and the axis +Y. By Pappus a turn of a radians sweeps 20 · 12.5 a.
Entities Bar(double x = 10) {
  return Together(Rectangle(1, x, 0, 5, 4), Centerline(9, 0, -10, 0, 10));
}

TEST(Revolve, HasEndsUnlessItCloses) {
  for (const double angle : {90., 360.}) {
    const json part = Built({Revolve(1, Front(), Bar(), angle)});
    ExpectClose(Volume(part), 20 * 12.5 * angle * kPi / 180);
    const auto keys = Keys(part["faces"]);
    for (const char* end : {"1:start", "1:end"})
      EXPECT_EQ(std::count(keys.begin(), keys.end(), end), angle < 360 ? 1 : 0) << end;
    // The start is the section's place, and right-handed about +Y takes +X to -Z.
    if (angle < 360) ExpectClose(FaceNamed(part, "1:start")["normal"], {0, 0, 1});
  }
  // On the other side of the axis -X is taken to +Z.
  ExpectClose(Box(Built({Revolve(1, Front(), Bar(-15), 90)})["outline"]), {-15, 0, 0, 0, 4, 15});
}

TEST(Revolve, FollowsPappusForRingsOfSeveralLoopsAndArcs) {
  // Each section is centred 20 beside its axis.
  const std::pair<double, Entities> cases[] = {
      {5 * kPi, {Circle(1, 0, 0, 3), Circle(2, 0, 0, 2)}},
      {18 * kPi, {Circle(1, 0, 0, 3), Circle(2, 0, 10, 3)}},
      {8 * kPi, {Ellipse(1, 0, 5, 4, 2)}},
      {40 + 4 * kPi, Slot(1, 5, 2)},
  };
  for (const auto& [area, section] : cases) {
    const Entities entities = Together(section, Centerline(9, -20, 0, -20, 1));
    ExpectClose(Volume(Built({Revolve(1, Front(), entities, 360)})), area * 2 * kPi * 20);
  }
}

TEST(Revolve, MakesSolidsThatTouchTheirAxis) {
  const Entities triangle = Together(Polygon(1, {{0, 0}, {3, 0}, {0, 4}}), Centerline(9, 0, 0, 0, 1));
  const json cone = Built({Revolve(1, Front(), triangle, 360)});
  ExpectClose(Volume(cone), kPi * 9 * 4 / 3);
  EXPECT_EQ(Keys(cone["faces"]), (std::vector<std::string>{"1:side:1", "1:side:2"}));
  ExpectClose(Volume(Built({Revolve(1, Front(), triangle, 45)})), kPi * 9 * 4 / 3 / 8);

  // A disc that touches the axis in one point.
  const Entities disc = {Circle(1, 5, 0, 5), Centerline(9, 0, 0, 0, 1)};
  ExpectClose(Volume(Built({Revolve(1, Front(), disc, 360)})), 25 * kPi * 2 * kPi * 5);
}

TEST(Revolve, IsRefusedWithTheReason) {
  const Entities on_both_sides = {Circle(1, 8, 0, 5), Circle(2, -8, 0, 5), Centerline(3, 0, 0, 0, 1)};
  const Entities open = {Line(1, 0, 0, 5, 0), Line(2, 5, 0, 5, 5), Centerline(3, 0, 0, 0, 1)};
  struct Case {
    const char* reason;
    Entities entities;
    double angle;
  };
  const Case cases[] = {
      {"The angle must be above 0.", Bar(), 0},
      {"The angle must not be above 360 degrees.", Bar(), 400},
      {"The section has no centerline to revolve about.", Rectangle(1, 1, 0, 5, 5), 90},
      {"The section crosses its axis.", Bar(-2), 360},
      {"The section crosses its axis.", on_both_sides, 360},
      {"The section is open at (0, 0).", open, 360},
  };
  for (const Case& one : cases) EXPECT_EQ(Reason({Revolve(1, Front(), one.entities, one.angle)}), one.reason);
  EXPECT_EQ(Reason({Revolve(1, Front(), Bar(), 360, "cut")}), "There is no body to cut.");
}

}  // namespace
}  // namespace bench::kernel::testing

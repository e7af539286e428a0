#include <gtest/gtest.h>

#include <algorithm>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

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

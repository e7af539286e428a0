#include <gtest/gtest.h>

#include <algorithm>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

// A rectangle x 10..15, y 0..4 and the axis +Y. By Pappus a turn of a radians sweeps 20 · 12.5 a.
Entities Bar(double x = 10) {
  return Together(Rectangle(1, x, 0, 5, 4), Centerline(9, 0, -10, 0, 10));
}

TEST(Revolve, TurnsRightHandedAboutTheAxis) {
  struct Case {
    double angle;
    bool reverse;
    std::vector<double> box;
    std::size_t faces;
  };
  // Right-handed about +Y takes +X to -Z.
  const Case cases[] = {
      {90, false, {0, 0, -15, 15, 4, 0}, 6},     {90, true, {0, 0, 0, 15, 4, 15}, 6},
      {180, false, {-15, 0, -15, 15, 4, 0}, 6},  {180, true, {-15, 0, 0, 15, 4, 15}, 6},
      {360, false, {-15, 0, -15, 15, 4, 15}, 4}, {360, true, {-15, 0, -15, 15, 4, 15}, 4},
  };
  for (const Case& one : cases) {
    const json part = Built({Revolve(1, Front(), Bar(), one.angle, "join", one.reverse)});
    ExpectClose(Box(part["outline"]), one.box, std::to_string(one.angle));
    ExpectClose(Volume(part), 20 * 12.5 * one.angle * kPi / 180);
    EXPECT_EQ(part["faces"].size(), one.faces);
    const auto keys = Keys(part["faces"]);
    const bool ends =
        std::count(keys.begin(), keys.end(), "1:start") && std::count(keys.begin(), keys.end(), "1:end");
    EXPECT_EQ(ends, one.angle < 360) << one.angle;
  }
}

TEST(Revolve, TakesTheAxisFromItsFirstToItsSecondEnd) {
  // Downwards, the turn goes the other way.
  const Entities down = Together(Rectangle(1, 10, 0, 5, 4), Centerline(9, 0, 10, 0, -10));
  ExpectClose(Box(Built({Revolve(1, Front(), down, 90)})["outline"]), {0, 0, 0, 15, 4, 15});
  // Of two centerlines the first counts: about y = -6 the bar's centre is 8 away.
  const Entities two =
      Together(Rectangle(1, 10, 0, 5, 4), Centerline(9, 0, -6, 5, -6), Centerline(10, 0, 0, 0, 5));
  ExpectClose(Volume(Built({Revolve(1, Front(), two, 360)})), 20 * 2 * kPi * 8);
}

TEST(Revolve, WorksOnEitherSideOfTheAxis) {
  const json left = Built({Revolve(1, Front(), Bar(-15), 90)});
  ExpectClose(Volume(left), 20 * 12.5 * kPi / 2);
  ExpectClose(Box(left["outline"]), {-15, 0, 0, 0, 4, 15});  // -X is taken to +Z
}

TEST(Revolve, FollowsPappusForARingOfEachSection) {
  struct Case {
    const char* what;
    Entities section;
    double area, distance;
  };
  const Case cases[] = {{"torus", {Circle(1, 20, 0, 3)}, 9 * kPi, 20},
                        {"elliptic ring", {Ellipse(1, 20, 5, 4, 2)}, 8 * kPi, 20},
                        {"pipe ring", {Circle(1, 20, 0, 3), Circle(2, 20, 0, 2)}, 5 * kPi, 20},
                        {"two rings", {Circle(1, 20, 0, 3), Circle(2, 20, 10, 3)}, 18 * kPi, 20},
                        {"slot ring", Slot(1, 5, 2), 40 + 4 * kPi, 0}};
  for (const Case& one : cases) {
    // The slot lies about the origin, its axis 20 to its left.
    const double axis = one.distance - 20;
    const Entities section = Together(one.section, Centerline(9, axis, 0, axis, 1));
    ExpectClose(Volume(Built({Revolve(1, Front(), section, 360)})), one.area * 2 * kPi * 20, one.what);
  }
}

TEST(Revolve, MakesSolidsThatTouchTheirAxis) {
  const Entities half_disc = {Arc(1, 0, 0, 10, -kPi / 2, kPi / 2), Line(2, 0, 10, 0, -10),
                              Centerline(3, 0, 0, 0, 1)};
  const json ball = Built({Revolve(1, Front(), half_disc, 360)});
  ExpectClose(Volume(ball), 4000 * kPi / 3);
  EXPECT_EQ(ball["faces"].size(), 1u);
  EXPECT_EQ(FaceNamed(ball, "1:side:1")["type"], "sphere");

  const Entities triangle = Together(Polygon(1, {{0, 0}, {3, 0}, {0, 4}}), Centerline(9, 0, 0, 0, 1));
  const json cone = Built({Revolve(1, Front(), triangle, 360)});
  ExpectClose(Volume(cone), kPi * 9 * 4 / 3);
  EXPECT_EQ(Keys(cone["faces"]), (std::vector<std::string>{"1:side:1", "1:side:2"}));
  ExpectClose(Volume(Built({Revolve(1, Front(), triangle, 45)})), kPi * 9 * 4 / 3 / 8);

  // A disc that touches the axis in one point.
  const Entities disc = {Circle(1, 5, 0, 5), Centerline(9, 0, 0, 0, 1)};
  ExpectClose(Volume(Built({Revolve(1, Front(), disc, 360)})), 25 * kPi * 2 * kPi * 5);
}

TEST(Revolve, CutsAGroove) {
  // A bar of radius 10 and length 40 along X, and a groove 2 wide and 1 deep: π (100 - 81) · 2.
  const Recipes bar = {
      Extrude(1, Right(), {Circle(1, 0, 0, 10)}, {.depth = 40}),
      Revolve(2, Front(), Together(Rectangle(1, 20, 9, 2, 3), Centerline(9, 0, 0, 1, 0)), 360, "cut")};
  ExpectClose(Volume(Built(bar)), kPi * (4000 - 38));
}

TEST(Revolve, IsRefusedWithTheReason) {
  struct Case {
    const char* reason;
    Entities entities;
    double angle;
    const char* operation;
  };
  const Case cases[] = {
      {"The angle must be above 0.", Bar(), 0, "join"},
      {"The angle must be above 0.", Bar(), -90, "join"},
      {"The angle must not be above 360 degrees.", Bar(), 400, "join"},
      {"The section has no centerline to revolve about.", Rectangle(1, 1, 0, 5, 5), 90, "join"},
      {"The section crosses its axis.", Bar(-2), 360, "join"},
      {"The section crosses its axis.", {Circle(1, 4, 0, 5), Centerline(2, 0, 0, 0, 1)}, 360, "join"},
      {"The section crosses its axis.",
       {Circle(1, 8, 0, 5), Circle(2, -8, 0, 5), Centerline(3, 0, 0, 0, 1)},
       360,
       "join"},
      {"The section is open at (0, 0).",
       {Line(1, 0, 0, 5, 0), Line(2, 5, 0, 5, 5), Centerline(3, 0, 0, 0, 1)},
       360,
       "join"},
      {"Entity 9 is a line without length.", Together(Rectangle(1, 5, 0, 5, 5), Centerline(9, 1, 1, 1, 1)),
       90, "join"},
      {"There is no body to cut.", Bar(), 360, "cut"},
  };
  for (const Case& one : cases)
    EXPECT_EQ(Reason({Revolve(1, Front(), one.entities, one.angle, one.operation)}), one.reason);
}

}  // namespace
}  // namespace bench::kernel::testing

#include <gtest/gtest.h>

#include <cmath>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

void ExpectMass(const json& part, double volume, double area, const std::vector<double>& center,
                const std::vector<std::vector<double>>& inertia) {
  const json& mass = part["mass"];
  ExpectClose(mass["volume"].get<double>(), volume, "volume");
  ExpectClose(mass["area"].get<double>(), area, "area");
  ExpectClose(mass["center"], center, "center");
  const double size = inertia[0][0] + inertia[1][1] + inertia[2][2];
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      EXPECT_NEAR(mass["inertia"][row][column].get<double>(), inertia[row][column], 1e-7 * size)
          << "inertia " << row << " " << column;
    }
  }
}

TEST(Mass, OfABlockFarFromTheOrigin) {
  // a = 20, b = 30, c = 10: V (b² + c²) / 12 and so on.
  const json part = Built({Extrude(1, FrontAt(500), Rectangle(1, 1000, -2000, 20, 30))});
  ExpectMass(part, 6000, 2200, {1010, -1985, 505}, {{500000, 0, 0}, {0, 250000, 0}, {0, 0, 650000}});
}

TEST(Mass, OfAWedgeHasProductsOfInertia) {
  // A prism over the triangle (0,0) (6,0) (0,6), depth 2: about the centre ∫x²dA = b³h/36 = 36 and ∫xy dA =
  // -b²h²/72 = -18 per unit of depth, V = 36, and the tensor has -∫xy beside its diagonal.
  const json part = Built({Extrude(1, Front(), Polygon(1, {{0, 0}, {6, 0}, {0, 6}}), {.depth = 2})});
  const double xx = 2 * 36, xy = 2 * -18, zz = 36 * 4.0 / 12;
  ExpectMass(part, 36, 2 * 18 + 2 * (12 + 6 * std::sqrt(2.0)), {2, 2, 1},
             {{xx + zz, -xy, 0}, {-xy, xx + zz, 0}, {0, 0, 2 * xx}});
}

TEST(Mass, OfCurvedSolidsIsExact) {
  // The cylinder: r = 10, h = 10.
  const double cylinder = 1000 * kPi;
  ExpectMass(
      Built({Extrude(1, Front(), {Circle(1, 0, 0, 10)})}), cylinder, 400 * kPi, {0, 0, 5},
      {{cylinder * (300 + 100) / 12, 0, 0}, {0, cylinder * (300 + 100) / 12, 0}, {0, 0, cylinder * 50}});
  // The ball: r = 10, 2/5 V r².
  const Entities half_disc = {Arc(1, 0, 0, 10, -kPi / 2, kPi / 2), Line(2, 0, 10, 0, -10),
                              Centerline(3, 0, 0, 0, 1)};
  const double ball = 4000 * kPi / 3;
  ExpectMass(Built({Revolve(1, Front(), half_disc, 360)}), ball, 400 * kPi, {0, 0, 0},
             {{ball * 40, 0, 0}, {0, ball * 40, 0}, {0, 0, ball * 40}});
  // The torus about Y: R = 20, r = 3, V (R² + 3/4 r²) about its axis, V (R²/2 + 5/8 r²) across.
  const double torus = 2 * kPi * kPi * 20 * 9;
  const double across = torus * (200 + 5.625), along = torus * (400 + 6.75);
  ExpectMass(Built({Revolve(1, Front(), {Circle(1, 20, 0, 3), Centerline(2, 0, 0, 0, 1)}, 360)}), torus,
             4 * kPi * kPi * 60, {0, 0, 0}, {{across, 0, 0}, {0, along, 0}, {0, 0, across}});
}

TEST(Mass, OfAClosedSplineComesNearTheCircleOfItsPoints) {
  // A cubic through points of a circle, 2π/n apart, is off by the fourth power of that angle.
  for (const int count : {16, 32, 64}) {
    Corners points;
    for (int i = 0; i < count; ++i)
      points.push_back({10 * std::cos(2 * kPi * i / count), 10 * std::sin(2 * kPi * i / count)});
    points.push_back(points.front());
    const json part = Built({Extrude(1, Front(), {Spline(1, points)})});
    const double angle = 2 * kPi / count;
    EXPECT_NEAR(Volume(part), 1000 * kPi, 1000 * kPi * std::pow(angle, 4) / 100) << count;
  }
}

TEST(Outline, IsExact) {
  const double root = std::sqrt(0.5);
  const json tilted = {{"origin", {0, 0, 0}}, {"x", {1, 0, 0}}, {"y", {0, root, root}}};
  const Entities ring = {Circle(1, 20, 0, 3), Centerline(2, 0, 0, 0, 1)};
  const Entities half_disc = {Arc(1, 0, 0, 10, -kPi / 2, kPi / 2), Line(2, 0, 10, 0, -10),
                              Centerline(3, 0, 0, 0, 1)};
  struct Case {
    const char* what;
    Recipes recipes;
    std::vector<double> box;
  };
  const Case cases[] = {
      {"three quarters of a disc",
       {Extrude(1, Front(), {Arc(1, 0, 0, 10, 0, 1.5 * kPi), Line(2, 0, -10, 0, 0), Line(3, 0, 0, 10, 0)})},
       {-10, -10, 0, 10, 10, 10}},
      {"a quarter of a torus", {Revolve(1, Front(), ring, 90)}, {0, -3, -23, 23, 3, 0}},
      {"a quarter of a ball", {Revolve(1, Front(), half_disc, 90)}, {0, -10, -10, 10, 10, 0}},
      // A cylinder of radius 4 whose axis (0, -1, 1)/√2 leans by 45 degrees: its rims reach 4/√2 in y and z.
      {"a leaning cylinder",
       {Extrude(1, tilted, {Circle(1, 0, 0, 4)})},
       {-4, -14 * root, -4 * root, 4, 4 * root, 14 * root}},
      // An ellipse of 10 · 5 in the same plane.
      {"a leaning elliptic cylinder",
       {Extrude(1, tilted, {Ellipse(1, 0, 0, 10, 5)})},
       {-10, -15 * root, -5 * root, 10, 5 * root, 15 * root}},
      {"an elliptic ring",
       {Revolve(1, Front(), {Ellipse(1, 20, 0, 9, 4), Centerline(2, 0, 0, 0, 1)}, 360)},
       {-29, -4, -29, 29, 4, 29}},
      // A leaning torus: the ring's circle reaches 20/√2 in y and z, and its tube 3 beyond.
      {"a leaning torus",
       {Revolve(1, tilted, ring, 360)},
       {-23, -20 * root - 3, -20 * root - 3, 23, 20 * root + 3, 20 * root + 3}},
  };
  for (const Case& one : cases) ExpectClose(Box(Built(one.recipes)["outline"]), one.box, one.what);
}

TEST(Outline, OfACutCylinderEndsWhereItsFaceEnds) {
  // A quarter of the cylinder is cut away, and with it what reached furthest in +X and +Y.
  const json part = Built({Extrude(1, Front(), {Circle(1, 0, 0, 10)}),
                           Extrude(2, Front(), Rectangle(1, 6, -20, 20, 40), {.operation = "cut"})});
  ExpectClose(Box(part["outline"]), {-10, -10, 0, 6, 10, 10});
}

}  // namespace
}  // namespace bench::kernel::testing

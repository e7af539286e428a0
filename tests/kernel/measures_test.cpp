// Masses, outlines, and points of curves and faces.
#include <gtest/gtest.h>

#include <cmath>

#include "bench/kernel/requests.h"
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
  const double ball = 4000 * kPi / 3;
  ExpectMass(Built({Revolve(1, Front(), HalfDisc(), 360)}), ball, 400 * kPi, {0, 0, 0},
             {{ball * 40, 0, 0}, {0, ball * 40, 0}, {0, 0, ball * 40}});
  // The torus about Y: R = 20, r = 3, V (R² + 3/4 r²) about its axis, V (R²/2 + 5/8 r²) across.
  const double torus = 2 * kPi * kPi * 20 * 9;
  const double across = torus * (200 + 5.625), along = torus * (400 + 6.75);
  ExpectMass(Built({Revolve(1, Front(), {Circle(1, 20, 0, 3), Centerline(2, 0, 0, 0, 1)}, 360)}), torus,
             4 * kPi * kPi * 60, {0, 0, 0}, {{across, 0, 0}, {0, along, 0}, {0, 0, across}});
}

TEST(Outline, IsExact) {
  const double root = std::sqrt(0.5);
  const json tilted = {{"origin", {0, 0, 0}}, {"x", {1, 0, 0}}, {"y", {0, root, root}}};
  const Entities ring = {Circle(1, 20, 0, 3), Centerline(2, 0, 0, 0, 1)};
  const auto expect = [](const char* what, const json& recipe, const std::vector<double>& box) {
    ExpectClose(Box(Built({recipe})["outline"]), box, what);
  };
  const Entities three_quarters = {Arc(1, 0, 0, 10, 0, 1.5 * kPi), Line(2, 0, -10, 0, 0),
                                   Line(3, 0, 0, 10, 0)};
  expect("three quarters of a disc", Extrude(1, Front(), three_quarters), {-10, -10, 0, 10, 10, 10});
  expect("a quarter of a torus", Revolve(1, Front(), ring, 90), {0, -3, -23, 23, 3, 0});
  expect("a quarter of a ball", Revolve(1, Front(), HalfDisc(), 90), {0, -10, -10, 10, 10, 0});
  // A cylinder of radius 4 whose axis (0, -1, 1)/√2 leans by 45 degrees: its rims reach 4/√2 in y and z.
  expect("a leaning cylinder", Extrude(1, tilted, {Circle(1, 0, 0, 4)}),
         {-4, -14 * root, -4 * root, 4, 4 * root, 14 * root});
  // An ellipse of 10 · 5 in the same plane.
  expect("a leaning elliptic cylinder", Extrude(1, tilted, {Ellipse(1, 0, 0, 10, 5)}),
         {-10, -15 * root, -5 * root, 10, 5 * root, 15 * root});
  const Entities elliptic_ring = {Ellipse(1, 20, 0, 9, 4), Centerline(2, 0, 0, 0, 1)};
  expect("an elliptic ring", Revolve(1, Front(), elliptic_ring, 360), {-29, -4, -29, 29, 4, 29});
  // A leaning torus: the ring's circle reaches 20/√2 in y and z, and its tube 3 beyond.
  expect("a leaning torus", Revolve(1, tilted, ring, 360),
         {-23, -20 * root - 3, -20 * root - 3, 23, 20 * root + 3, 20 * root + 3});
}

TEST(Outline, OfACutCylinderEndsWhereItsFaceEnds) {
  // A quarter of the cylinder is cut away, and with it what reached furthest in +X and +Y.
  const json part = Built({Extrude(1, Front(), {Circle(1, 0, 0, 10)}),
                           Extrude(2, Front(), Rectangle(1, 6, -20, 20, 40), {.operation = "cut"})});
  ExpectClose(Box(part["outline"]), {-10, -10, 0, 6, 10, 10});
}

json Ask(const std::string& what, const Recipes& recipes, json question) {
  Requests requests;
  question["id"] = 1;
  question["do"] = what;
  question["recipes"] = recipes;
  return json::parse(requests.Answer(question.dump())).at("ok");
}

json Extremes(const Recipes& recipes, const std::string& face, const json& direction) {
  return Ask("extremes", recipes, {{"face", face}, {"direction", direction}});
}

// A wall on the ellipse x²/9² + y²/4² = 1, from z = 0 to 10.
Recipes EllipticDisc() {
  return {Extrude(1, Front(), {Ellipse(1, 0, 0, 9, 4)})};
}
Recipes EllipticHole() {
  return {Extrude(1, Front(), Rectangle(2, -20, -20, 40, 40)),
          Extrude(2, Front(), {Ellipse(1, 0, 0, 9, 4)}, {.operation = "cut"})};
}

double Dot(const json& a, const json& b) {
  double sum = 0;
  for (int i = 0; i < 3; ++i) sum += a[i].get<double>() * b[i].get<double>();
  return sum;
}

TEST(Evaluate, GivesTheNormalOutOfTheMaterial) {
  const struct {
    Recipes recipes;
    const char* face;
    double out;  // 1 where the material ends at the ellipse, -1 where it begins there
  } cases[] = {{EllipticDisc(), "1:side:1", 1}, {EllipticHole(), "2:side:1", -1}};
  for (const auto& [recipes, face, out] : cases) {
    const json range = FaceNamed(Built(recipes), face);
    const double u = range["u"][0].get<double>() + 0.3, v = range["v"][0].get<double>() + 4;
    const json at = Ask("evaluate", recipes, {{"face", face}, {"u", u}, {"v", v}});
    const double x = at["point"][0], y = at["point"][1];
    ExpectClose(x * x / 81 + y * y / 16, 1, face);
    // The gradient of that sum is (2x/81, 2y/16).
    const double size = std::hypot(x / 81, y / 16);
    ExpectClose(at["normal"], {out * x / 81 / size, out * y / 16 / size, 0}, face);
    ExpectClose(Dot(at["du"], at["normal"]), 0, face);
    ExpectClose(std::abs(at["dv"][2].get<double>()), 1, face);
    // About the ellipse's middle, the second derivative is the way back to it.
    ExpectClose(at["duu"], {-x, -y, 0}, face);
  }
}

TEST(Evaluate, FollowsAnEdgeFromItsOneEndToItsOther) {
  const char* rim = "1:end|1:side:1";
  const auto at = [&](double t) { return Ask("evaluate", EllipticDisc(), {{"edge", rim}, {"t", t}}); };
  // (9 cos 2πt, ± 4 sin 2πt, 10): at a quarter (0, ± 4, 10), with the derivatives 2π (-9, 0) and 4π² (0, ∓
  // 4).
  ExpectClose(at(0)["point"], {9, 0, 10});
  ExpectClose(at(1)["point"], {9, 0, 10});
  const json quarter = at(0.25);
  const double side = quarter["point"][1].get<double>() > 0 ? 1 : -1;
  ExpectClose(quarter["point"], {0, side * 4, 10});
  ExpectClose(quarter["dt"], {-18 * kPi, 0, 0});
  ExpectClose(quarter["dtt"], {0, -side * 16 * kPi * kPi, 0});
}

TEST(Extremes, ArePointsOfTheFace) {
  const Recipes block = {Extrude(1, Front(), Rectangle(1, 0, 0, 40, 30))};
  const Recipes disc = {Extrude(1, Front(), {Circle(1, 15, 12, 4)})};
  const double diagonal = 10 / std::sqrt(3);
  // Furthest along (3, 4) lies (81 · 3, 16 · 4) / √(81 · 3² + 16 · 4²) = (243, 64) / √985.
  const double root = std::sqrt(985);
  const auto expect = [](const Recipes& recipes, const char* face, const json& direction,
                         const std::vector<double>& low, const std::vector<double>& high) {
    const json extremes = Extremes(recipes, face, direction);
    ExpectClose(extremes["low"], low, face);
    ExpectClose(extremes["high"], high, face);
  };
  expect(block, "1:end", {1, 2, 0}, {0, 0, 10}, {40, 30, 10});
  expect(disc, "1:side:1", {1, 0, 1}, {11, 12, 0}, {19, 12, 10});
  expect({Revolve(1, Top(), HalfDisc(), 360)}, "1:side:1", {2, 2, 2}, {-diagonal, -diagonal, -diagonal},
         {diagonal, diagonal, diagonal});
  expect(EllipticDisc(), "1:end", {3, 4, 0}, {-243 / root, -64 / root, 10}, {243 / root, 64 / root, 10});
}

}  // namespace
}  // namespace bench::kernel::testing

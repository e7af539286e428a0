#include <gtest/gtest.h>

#include <cmath>

#include "bench/kernel/requests.h"
#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

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

TEST(Evaluate, TellsWhatItHasNoAnswerTo) {
  const json questions[] = {
      {{"face", "9:end"}, {"u", 0}, {"v", 0}},
      {{"edge", "9:end|1:end"}, {"t", 0}},
      {{"face", "1:end"}, {"u", 0}, {"v", 0}},  // a plane: its frame tells
  };
  for (const json& question : questions)
    EXPECT_TRUE(Ask("evaluate", EllipticDisc(), question).contains("refused")) << question;
}

TEST(Evaluate, BuildsNothingAnew) {
  Requests requests;
  const json recipes = EllipticDisc();
  requests.Answer(json{{"id", 1}, {"do", "regenerate"}, {"recipes", recipes}}.dump());
  const json question = {
      {"id", 2}, {"do", "evaluate"}, {"edge", "1:end|1:side:1"}, {"t", 0.5}, {"recipes", recipes}};
  EXPECT_TRUE(json::parse(requests.Answer(question.dump()))["ok"].contains("point"));
  EXPECT_EQ(requests.regenerator().features_built(), 1);
}

TEST(Extremes, ArePointsOfTheFace) {
  const Recipes block = {Extrude(1, Front(), Rectangle(1, 0, 0, 40, 30))};
  const Recipes disc = {Extrude(1, Front(), {Circle(1, 15, 12, 4)})};
  const Entities half_disc = {Arc(1, 0, 0, 10, -kPi / 2, kPi / 2), Line(2, 0, 10, 0, -10),
                              Centerline(9, 0, 0, 0, 1)};
  const double diagonal = 10 / std::sqrt(3);
  // Furthest along (3, 4) lies (81 · 3, 16 · 4) / √(81 · 3² + 16 · 4²) = (243, 64) / √985.
  const double root = std::sqrt(985);
  const struct {
    const char* what;
    Recipes recipes;
    const char* face;
    json direction;
    std::vector<double> low, high;
  } cases[] = {
      {"plane", block, "1:end", {1, 2, 0}, {0, 0, 10}, {40, 30, 10}},
      {"cylinder", disc, "1:side:1", {1, 0, 1}, {11, 12, 0}, {19, 12, 10}},
      {"sphere",
       {Revolve(1, Top(), half_disc, 360)},
       "1:side:1",
       {2, 2, 2},
       {-diagonal, -diagonal, -diagonal},
       {diagonal, diagonal, diagonal}},
      {"ellipse",
       EllipticDisc(),
       "1:end",
       {3, 4, 0},
       {-243 / root, -64 / root, 10},
       {243 / root, 64 / root, 10}},
  };
  for (const auto& [what, recipes, face, direction, low, high] : cases) {
    const json extremes = Extremes(recipes, face, direction);
    ExpectClose(extremes["low"], low, what);
    ExpectClose(extremes["high"], high, what);
  }
}

}  // namespace
}  // namespace bench::kernel::testing

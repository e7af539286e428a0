#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

#include "tests/kernel/scenes.h"

namespace bench::kernel::testing {
namespace {

// Rows: what the model's x, y and z are on the sheet.
const json kFromFront = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
const json kFromTop = {{1, 0, 0}, {0, 0, 1}, {0, -1, 0}};

// 20 · 30 · 10 with a corner in the origin.
Recipes Board() {
  return {Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30))};
}

// The same with a hole of radius 3 at (10, 10), from its front as deep as told.
Recipes Drilled(double depth) {
  return {Board()[0], Extrude(2, FrontAt(10), {Circle(1, 10, 10, 3)},
                              {.operation = "cut", .depth = depth, .reverse = true})};
}

json Project(const Recipes& recipes, const json& view, json more = json::object()) {
  more["view"] = view;
  return Ask("project", {PartOf(recipes)}, more).at("ok");
}

// A straight stroke as x1, y1, x2, y2, the lesser end first, to a thousandth of a millimetre.
using Strokes = std::multiset<std::vector<double>>;
Strokes Straight(const json& lines) {
  Strokes strokes;
  for (const json& line : lines) {
    if (line.size() != 2) continue;
    auto ends = line.get<std::vector<std::vector<double>>>();
    for (auto& end : ends)
      for (double& number : end) number = std::round(number * 1e3) / 1e3 + 0.0;
    std::ranges::sort(ends);
    strokes.insert({ends[0][0], ends[0][1], ends[1][0], ends[1][1]});
  }
  return strokes;
}

double AreaOf(const json& polygon) {
  double twice = 0;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const json &from = polygon[i], &to = polygon[(i + 1) % polygon.size()];
    twice += from[0].get<double>() * to[1].get<double>() - from[1].get<double>() * to[0].get<double>();
  }
  return std::abs(twice) / 2;
}

TEST(Project, EdgesBehindOthersAreDrawnOnce) {
  const json view = Project(Board(), kFromFront);
  EXPECT_EQ(Straight(view["visible"]),
            (Strokes{{0, 0, 20, 0}, {20, 0, 20, 30}, {0, 30, 20, 30}, {0, 0, 0, 30}}));
  EXPECT_EQ(view["visible"].size(), 4u);
  EXPECT_TRUE(view["hidden"].empty());
  ExpectClose(view["low"], {0, 0});
  ExpectClose(view["high"], {20, 30});
}

TEST(Project, AHoleIsACircleFromBeforeAndDashedFromAbove) {
  const json front = Project(Drilled(4), kFromFront);
  ASSERT_EQ(front["visible"].size(), 5u);
  const json& circle =
      *std::ranges::find_if(front["visible"], [](const json& line) { return line.size() > 2; });
  ExpectClose(circle.front(), circle.back().get<std::vector<double>>());
  for (const json& point : circle)
    EXPECT_NEAR(std::hypot(point[0].get<double>() - 10, point[1].get<double>() - 10), 3, 1e-6);
  // From above, y points into the sheet and the front, z = 10, lies below. The hole reaches from z = 10 to 6.
  const json top = Project(Drilled(4), kFromTop);
  EXPECT_EQ(top["visible"].size(), 4u);
  EXPECT_EQ(Straight(top["hidden"]), (Strokes{{7, -10, 7, -6}, {13, -10, 13, -6}, {7, -6, 13, -6}}));
}

TEST(Project, SilhouettesAreDrawnAndSmoothEdgesAreNot) {
  // A cylinder of radius 5 along z, 10 long: its seam is no line.
  const json cylinder = Project({Extrude(1, Front(), {Circle(1, 0, 0, 5)})}, kFromTop);
  EXPECT_EQ(Straight(cylinder["visible"]),
            (Strokes{{-5, -10, 5, -10}, {-5, 0, 5, 0}, {-5, -10, -5, 0}, {5, -10, 5, 0}}));
  EXPECT_TRUE(cylinder["hidden"].empty());
  // A slot from above: its round ends run smoothly into its flat sides, 3 wide and 16 long in all.
  const json slot = Project({Extrude(1, Front(), Slot(1, 5, 3))}, kFromTop);
  EXPECT_EQ(Straight(slot["visible"]),
            (Strokes{{-8, -10, 8, -10}, {-8, 0, 8, 0}, {-8, -10, -8, 0}, {8, -10, 8, 0}}));
}

TEST(Project, ACutTakesTheNearSideAwayAndTellsTheCutFaces) {
  // Through the hole's axis: what is left of the section on either side is 7 by 10.
  const json cut = {{"cut", {{"origin", {0, 10, 0}}, {"normal", {0, 2, 0}}}}};
  const json across = Project(Drilled(10), kFromTop, cut);
  ASSERT_EQ(across["section"].size(), 2u);
  for (const json& region : across["section"]) {
    ExpectClose(AreaOf(region["outer"]), 70);
    EXPECT_TRUE(region["holes"].empty());
  }
  const Strokes seen = Straight(across["visible"]);
  EXPECT_TRUE(seen.contains({7, -10, 7, 0}) && seen.contains({13, -10, 13, 0}));
  // Parallel to the front: 20 by 30 with the circle in it; what is left is 5 thick, so that from the top
  // (where z points down) it reaches to -5.
  const json flat = {{"cut", {{"origin", {3, 4, 5}}, {"normal", {0, 0, 1}}}}};
  const json from_front = Project(Drilled(10), kFromFront, flat);
  ASSERT_EQ(from_front["section"].size(), 1u);
  EXPECT_EQ(from_front["section"][0]["body"], 0);
  ExpectClose(AreaOf(from_front["section"][0]["outer"]), 600);
  EXPECT_NEAR(AreaOf(from_front["section"][0]["holes"].at(0)), 9 * kPi, 0.1);
  const json bounds = Project(Drilled(10), kFromTop, {{"cut", flat["cut"]}, {"only_bounds", true}});
  ExpectClose(bounds["low"], {0, -5});
  EXPECT_FALSE(bounds.contains("visible"));

  const json beside = {{"cut", {{"origin", {0, 30, 0}}, {"normal", {0, 1, 0}}}}};
  EXPECT_TRUE(Project(Board(), kFromTop, beside)["section"].empty());
  const json before = {{"cut", {{"origin", {0, 0, 0}}, {"normal", {0, 1, 0}}}}};
  EXPECT_TRUE(Project(Board(), kFromTop, before)["low"].is_null());
}

TEST(Project, BoundsAreExactFromAnywhere) {
  // Turned by 45 degrees about z: corners at (20, 30), (20, 0), (0, 30) lie at (x + y)/√2 and (y - x)/√2.
  const double s = std::sqrt(0.5);
  const json bounds = Project(Board(), {{s, -s, 0}, {s, s, 0}, {0, 0, 1}}, {{"only_bounds", true}});
  ExpectClose(bounds["low"], {0, -20 * s});
  ExpectClose(bounds["high"], {50 * s, 30 * s});
}

TEST(Project, OneBodyHidesAnother) {
  // The second block stands 10 to the right, 10 higher and behind the first, which covers its lower left.
  const json both = AssemblyOf({Placed(1, 0, Shift(0, 0, 0)), Placed(2, 0, Shift(10, 10, -20))});
  const json view = Ask("project", {PartOf(Board()), both}, {{"view", kFromFront}}).at("ok");
  EXPECT_EQ(Straight(view["visible"]), (Strokes{{0, 0, 20, 0},
                                                {20, 0, 20, 30},
                                                {0, 30, 20, 30},
                                                {0, 0, 0, 30},
                                                {10, 30, 10, 40},
                                                {10, 40, 30, 40},
                                                {30, 10, 30, 40},
                                                {20, 10, 30, 10}}));
  EXPECT_EQ(Straight(view["hidden"]), (Strokes{{10, 10, 10, 30}, {10, 10, 20, 10}}));
}

TEST(Project, SenselessViewsAndCutsAreComplainedAboutAndNothingHasNoBounds) {
  const json nothing = Project({}, kFromFront);
  EXPECT_TRUE(nothing["low"].is_null() && nothing["high"].is_null());
  EXPECT_TRUE(nothing["visible"].empty());
  const auto error = [](const json& request) {
    return Ask("project", {PartOf(Board())}, request).value("error", "");
  };
  const json mirrored = {{-1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  EXPECT_NE(error({{"view", mirrored}}).find("'view' must be a rotation"), std::string::npos);
  const json flat_cut = {{"origin", {0, 0, 0}}, {"normal", {0, 0, 0}}};
  EXPECT_NE(error({{"view", kFromFront}, {"cut", flat_cut}}).find("'normal'"), std::string::npos);
}

}  // namespace
}  // namespace bench::kernel::testing

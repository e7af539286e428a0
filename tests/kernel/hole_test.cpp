#include <gtest/gtest.h>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

json Hole(int feature, const std::string& point, double diameter, double depth, const json& direction = {}) {
  json recipe = {
      {"feature", feature}, {"kind", "hole"}, {"point", point}, {"diameter", diameter}, {"depth", depth}};
  if (!direction.is_null()) recipe["direction"] = direction;
  return recipe;
}

// A block of 40 × 30 × 20 on FRONT and a sketch with points: one on each of FRONT, the top and in the air.
Recipes Block() {
  return {Extrude(1, Front(), Rectangle(1, 0, 0, 40, 30), {.depth = 20}),
          SketchRecipe(2, Front(), {Point(1, 10, 10), Point(2, 100, 10), AsConstruction(Point(3, 5, 5))}),
          SketchRecipe(3, FrontAt(20), {Point(1, 30, 20)})};
}

Recipes With(Recipes recipes, const json& last) {
  recipes.push_back(last);
  return recipes;
}

constexpr double kBlock = 40 * 30 * 20;

TEST(Hole, IsACylinderFromItsPointAlongItsDirection) {
  const json part = Built(With(Block(), Hole(4, "2:point:1", 6, 12, {0, 0, 1})));
  ExpectClose(Volume(part), kBlock - 9 * kPi * 12);
  const json side = FaceNamed(part, "4:side");
  EXPECT_EQ(side["type"], "cylinder");
  ExpectClose(side["radius"].get<double>(), 3);
  ExpectClose(Box(side), {7, 7, 0, 13, 13, 12});
  // The floor looks back to where the drill came from.
  ExpectClose(FaceNamed(part, "4:end")["normal"], {0, 0, -1});
  EXPECT_EQ(part["faces"].size(), 8u);
}

TEST(Hole, WithoutADirectionGoesIntoTheMaterialUnderItsPoint) {
  // From FRONT upwards, from the top downwards; 25 is through.
  ExpectClose(Box(FaceNamed(Built(With(Block(), Hole(4, "2:point:1", 6, 5))), "4:side")),
              {7, 7, 0, 13, 13, 5});
  ExpectClose(Box(FaceNamed(Built(With(Block(), Hole(4, "3:point:1", 4, 5))), "4:side")),
              {28, 18, 15, 32, 22, 20});
  ExpectClose(Volume(Built(With(Block(), Hole(4, "3:point:1", 4, 25)))), kBlock - 4 * kPi * 20);
}

TEST(Hole, IsRefusedWithTheReason) {
  const json up = {0, 0, 1}, down = {0, 0, -1};
  const std::pair<std::string, json> cases[] = {
      {"The diameter must be above 0.", Hole(4, "2:point:1", 0, 5, up)},
      {"The depth must be above 0.", Hole(4, "2:point:1", 5, -1, up)},
      {"The cut removes nothing from the body.", Hole(4, "2:point:1", 5, 5, down)},
      {"The point lies on no face of the body.", Hole(4, "2:point:2", 5, 5)},
      {"There is no sketch point 2:point:3.", Hole(4, "2:point:3", 5, 5, up)},
  };
  for (const auto& [reason, hole] : cases) EXPECT_EQ(Reason(With(Block(), hole)), reason);
  EXPECT_EQ(Reason({SketchRecipe(2, Front(), {Point(1, 0, 0)}), Hole(4, "2:point:1", 5, 5, up)}),
            "There is no body to drill.");
}

}  // namespace
}  // namespace bench::kernel::testing

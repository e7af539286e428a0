#include <gtest/gtest.h>

#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

json Move(int feature, const json& x, const json& y, const json& z, const json& origin) {
  return {{"feature", feature}, {"kind", "move"}, {"x", x}, {"y", y}, {"z", z}, {"origin", origin}};
}

// A quarter turn about +Z, right-handed, and then 100 along X.
json QuarterTurn(int feature) {
  return Move(feature, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {100, 0, 0});
}

// A block of 40 × 30 × 20 with a slot through its top, which leaves two faces of one name on it.
Recipes SlottedBlock() {
  return {Extrude(1, Front(), Rectangle(1, 0, 0, 40, 30), {.depth = 20}),
          Extrude(2, FrontAt(20), Rectangle(1, 10, 0, 4, 30), {"cut", "blind", 5, 0, true})};
}

TEST(Move, TakesTheBodyAlongAndLeavesSketches) {
  Recipes recipes = SlottedBlock();
  recipes.insert(recipes.begin(), SketchRecipe(3, Front(), {Point(1, 10, 5)}));
  recipes.push_back(QuarterTurn(4));
  const json part = Built(recipes);
  // x 0..40 becomes y, y 0..30 becomes 100 - y.
  ExpectClose(Box(part["outline"]), {70, 0, 0, 100, 40, 20});
  ExpectClose(Volume(part), 40 * 30 * 20 - 4 * 30 * 5);
  ExpectClose(Named(part["points"], "3:point:1")["at"], {10, 5, 0});

  // What follows meets the body where it is now.
  recipes.push_back(Extrude(5, FrontAt(20), {Circle(1, 85, 35, 3)}, {"cut", "blind", 10, 0, true}));
  ExpectClose(Volume(Built(recipes)), 24000 - 600 - 90 * kPi);
}

TEST(Move, LeavesEveryKeyToItsFace) {
  // Half a turn about +Z reverses the order of the centres, by which parts of a face are numbered.
  const json half_turn = Move(3, {-1, 0, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, 0});
  Recipes recipes = SlottedBlock();
  const json before = Built(recipes);
  recipes.push_back(half_turn);
  const json after = Built(recipes);
  EXPECT_EQ(Keys(after["faces"]), Keys(before["faces"]));
  EXPECT_EQ(Keys(after["edges"]), Keys(before["edges"]));
  ExpectClose(Box(FaceNamed(before, "1:end")), {0, 0, 20, 10, 30, 20});
  ExpectClose(Box(FaceNamed(after, "1:end")), {-10, -30, 20, 0, 0, 20});
  // Also after a feature that follows.
  recipes.push_back(Extrude(4, Front(), {Circle(1, -30, -15, 3)}, {"cut", "through_all"}));
  ExpectClose(Box(FaceNamed(Built(recipes), "1:end")), {-10, -30, 20, 0, 0, 20});
}

TEST(Move, OfNothingIsRefused) {
  EXPECT_EQ(Reason({QuarterTurn(1)}), "There is no body to move.");
}

}  // namespace
}  // namespace bench::kernel::testing

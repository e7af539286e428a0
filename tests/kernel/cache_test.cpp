#include <gtest/gtest.h>

#include "bench/kernel/recipe.h"
#include "bench/kernel/regenerate.h"
#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

Recipes Tower(int floors) {
  Recipes recipes;
  for (int i = 0; i < floors; ++i)
    recipes.push_back(Extrude(i + 1, FrontAt(10 * i), Rectangle(1, i, 0, 100, 5)));
  return recipes;
}

// How many features a request costs.
int Cost(Regenerator& regenerator, const Recipes& recipes) {
  const int before = regenerator.features_built();
  regenerator.Describe(ReadRecipes(json(recipes)));
  return regenerator.features_built() - before;
}

TEST(Cache, BuildsOnlyWhatIsNew) {
  Regenerator regenerator;
  EXPECT_EQ(Cost(regenerator, Tower(5)), 5);
  EXPECT_EQ(Cost(regenerator, Tower(5)), 0);
  EXPECT_EQ(Cost(regenerator, Tower(6)), 1);
  EXPECT_EQ(Cost(regenerator, Tower(3)), 0);
}

TEST(Cache, BuildsAnewFromTheFirstFeatureThatChanged) {
  Regenerator regenerator;
  Recipes recipes = Tower(5);
  Cost(regenerator, recipes);
  recipes[3]["extent"]["depth"] = 11;
  EXPECT_EQ(Cost(regenerator, recipes), 2);
  // The former chain is still there.
  EXPECT_EQ(Cost(regenerator, Tower(5)), 0);
}

TEST(Cache, RemembersRefusals) {
  Regenerator regenerator;
  const Recipes recipes = {Extrude(1, Front(), {Circle(1, 0, 0, -1)})};
  EXPECT_EQ(Cost(regenerator, recipes), 1);
  EXPECT_EQ(Cost(regenerator, recipes), 0);
  EXPECT_EQ(regenerator.Describe(ReadRecipes(json(recipes)))["features"][0]["status"], "refused");
}

TEST(Cache, KeepsTheBeginningOfAChainThatIsLongerThanItself) {
  Regenerator regenerator(4);
  EXPECT_EQ(Cost(regenerator, Tower(6)), 6);
  EXPECT_EQ(Cost(regenerator, Tower(6)), 2);
  EXPECT_EQ(Cost(regenerator, Tower(4)), 0);
}

TEST(Cache, LetsGoWhatWasUsedLongestAgo) {
  Regenerator regenerator(2);
  const Recipes first = {Extrude(1, Front(), {Circle(1, 0, 0, 1)})},
                second = {Extrude(1, Front(), {Circle(1, 0, 0, 2)})},
                third = {Extrude(1, Front(), {Circle(1, 0, 0, 3)})};
  Cost(regenerator, first);
  Cost(regenerator, second);
  EXPECT_EQ(Cost(regenerator, first), 0);
  Cost(regenerator, third);
  EXPECT_EQ(Cost(regenerator, first), 0);
  EXPECT_EQ(Cost(regenerator, second), 1);
}

TEST(Cache, ForgetsAllWhenTold) {
  Regenerator regenerator;
  Cost(regenerator, Tower(3));
  regenerator.Forget();
  EXPECT_EQ(Cost(regenerator, Tower(3)), 3);
}

}  // namespace
}  // namespace bench::kernel::testing

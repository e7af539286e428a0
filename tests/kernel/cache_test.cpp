#include <gtest/gtest.h>

#include "bench/kernel/feature.h"
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

TEST(Cache, RemembersRefusalsUntilItIsToldToForget) {
  Regenerator regenerator;
  const Recipes recipes = {Extrude(1, Front(), {Circle(1, 0, 0, -1)})};
  EXPECT_EQ(Cost(regenerator, recipes), 1);
  EXPECT_EQ(Cost(regenerator, recipes), 0);
  regenerator.Forget();
  EXPECT_EQ(Cost(regenerator, recipes), 1);
}

}  // namespace
}  // namespace bench::kernel::testing

// Dimensions: the symbols of a feature's numbers, and what it takes to change one.
#include <ProDimension.h>
#include <ProSolid.h>
#include <gmock/gmock.h>

#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using testing::ElementsAre;

class DimensionsTest : public support::FeatureTest {
 protected:
  struct Shown {
    std::wstring symbol;
    int type;
    double value;
    bool operator==(const Shown&) const = default;
  };
  std::vector<Shown> All() {
    std::vector<Shown> all;
    const auto see = [](ProDimension* dimension, ProError, ProAppData data) {
      support::NameBuffer symbol;
      auto type = PRODIMTYPE_UNKNOWN;
      double value = 0;
      EXPECT_EQ(ProDimensionSymbolGet(dimension, symbol), PRO_TK_NO_ERROR);
      EXPECT_EQ(ProDimensionTypeGet(dimension, &type), PRO_TK_NO_ERROR);
      EXPECT_EQ(ProDimensionValueGet(dimension, &value), PRO_TK_NO_ERROR);
      static_cast<std::vector<Shown>*>(data)->push_back({symbol.text(), static_cast<int>(type), value});
      return PRO_TK_NO_ERROR;
    };
    EXPECT_EQ(ProSolidDimensionVisit(Solid(), PRO_B_FALSE, see, nullptr, &all), PRO_TK_NO_ERROR);
    return all;
  }
  ProDimension Dimension(int id) { return {PRO_DIMENSION, id, Handle(*part_)}; }
  // The second side with a depth of 10, the first one with 4, 5 degrees.
  support::Creation Full() {
    return Extrude(*part_, Plate(), {.first_side = 128, .depth2 = 4, .taper_deg = 5});
  }
};

TEST_F(DimensionsTest, SymbolsAreCountedOnAndGoWithTheirFeature) {
  EXPECT_TRUE(All().empty());
  auto full = Full();
  EXPECT_THAT(All(), ElementsAre(Shown{L"d0", 1, 10}, Shown{L"d1", 1, 4}, Shown{L"d2", 21, 5}));
  ASSERT_EQ(ProFeatureDelete(Solid(), &full.feature.id, 1, nullptr, 0), PRO_TK_NO_ERROR);
  EXPECT_TRUE(All().empty());
  ASSERT_EQ(Extrude(*part_, Circle(0, 0, 1), {.depth = 7}).status, PRO_TK_NO_ERROR);
  EXPECT_THAT(All(), ElementsAre(Shown{L"d3", 1, 7}));
}

TEST_F(DimensionsTest, ARedefinitionKeepsTheSymbolsOfTheNumbersThatStay) {
  const auto full = Full();
  support::Tree tree;
  FillExtrudeTree(tree, {.depth = 12, .taper_deg = 3});
  ASSERT_EQ(Redefine(full.feature, tree.Root()).status, PRO_TK_NO_ERROR);
  EXPECT_THAT(All(), ElementsAre(Shown{L"d0", 1, 12}, Shown{L"d2", 21, 3}));
}

TEST_F(DimensionsTest, TheySurviveSavingAndRetrieving) {
  Full();
  part_->dimensions[1].relation_driven = true;
  const auto before = All();
  SaveAndRetrieve();
  EXPECT_EQ(All(), before);
  EXPECT_TRUE(part_->dimensions[1].relation_driven);
  ASSERT_EQ(Extrude(*part_, Circle(20, 10, 1), {.depth = 20}).status, PRO_TK_NO_ERROR);
  EXPECT_EQ(All().back(), (Shown{L"d3", 1, 20}));
}

TEST_F(DimensionsTest, WhatMakesNoSenseHasAStatusAndChangesNothing) {
  Full();
  part_->dimensions[1].relation_driven = true;
  const auto before = All();
  ProDimension depth = Dimension(0), driven = Dimension(1), taper = Dimension(2), none = Dimension(3);
  ProDimension no_dimension{PRO_SURFACE, 0, Handle(*part_)};
  constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
  const std::pair<ProError, ProError> cases[] = {
      {ProDimensionValueSet(&depth, 0), PRO_TK_BAD_INPUTS},
      {ProDimensionValueSet(&depth, kNotANumber), PRO_TK_BAD_INPUTS},
      {ProDimensionValueSet(&taper, 90), PRO_TK_BAD_INPUTS},
      {ProDimensionValueSet(&driven, 5), PRO_TK_BAD_CONTEXT},
      {ProDimensionValueSet(&none, 5), PRO_TK_E_NOT_FOUND},
      {ProDimensionValueSet(&no_dimension, 5), PRO_TK_BAD_INPUTS},
      {ProDimensionValueGet(&depth, nullptr), PRO_TK_BAD_INPUTS},
      {ProSolidDimensionVisit(Solid(), PRO_B_FALSE, nullptr, nullptr, nullptr), PRO_TK_BAD_INPUTS},
  };
  for (const auto& [status, expected] : cases) EXPECT_EQ(status, expected);
  EXPECT_EQ(All(), before);
}

}  // namespace
}  // namespace bench

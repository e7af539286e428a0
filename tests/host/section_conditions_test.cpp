// Constraints, dimensions and texts of sections: what the calls refuse, and what comes of a refusal.
#include <ProArray.h>
#include <ProSecconstr.h>
#include <ProSelection.h>
#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "bench/host/calls/section.h"
#include "bench/host/storage/model_store.h"
#include "bench/host/storage/section_json.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr int kWhole = 1, kStart = 2, kEnd = 3;
constexpr int kHorizontal = 1, kParallel = 7, kLength = 1, kPointDistance = 2, kRadius = 3, kAngle = 12;

ProSelection Select(ProSection section, int entity, int point = kWhole) {
  ProSelection selection = nullptr;
  EXPECT_EQ(ProSectionEntityGetSelected(section, entity, static_cast<ProSectionPointType>(point), nullptr, -1,
                                        &selection),
            PRO_TK_NO_ERROR);
  return selection;
}

// Makes a constraint between selections, which it frees; `count` may lie about how many there are.
ProError Constrain(ProSection section, std::vector<ProSelection> selections, int type, int count = -1) {
  const int size = static_cast<int>(selections.size());
  ProArray array = nullptr;
  EXPECT_EQ(ProArrayAlloc(size, sizeof(ProSelection), 1, &array), PRO_TK_NO_ERROR);
  std::copy(selections.begin(), selections.end(), static_cast<ProSelection*>(array));
  int id = -1;
  const ProError status =
      ProSectionConstraintCreate(section, static_cast<ProSelection*>(array), count < 0 ? size : count,
                                 static_cast<ProConstraintType>(type), &id);
  EXPECT_EQ(id > 0, status == PRO_TK_NO_ERROR);
  EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
  for (ProSelection& selection : selections) EXPECT_EQ(ProSelectionFree(&selection), PRO_TK_NO_ERROR);
  return status;
}

struct Made {
  ProError status;
  int id = -1;
};

Made Dimension(ProSection section, std::vector<int> entities, int type, int point = kWhole) {
  std::vector<ProSectionPointType> points(entities.size(), static_cast<ProSectionPointType>(point));
  Pro2dPnt place = {3, 4};
  Made made{};
  made.status = ProSecdimCreate(section, entities.data(), points.data(), static_cast<int>(entities.size()),
                                static_cast<ProSecdimType>(type), place, &made.id);
  return made;
}

int AddText(ProSection section, std::wstring_view text, std::wstring_view font = {}) {
  Pro2dTextdef record{};
  record.type = PRO_2D_TEXT;
  record.corner2[0] = 12;
  record.corner2[1] = 10;
  text.copy(record.text, 255);
  font.copy(record.font, 255);
  int id = -1;
  ProSectionEntityAdd(section, reinterpret_cast<Pro2dEntdef*>(&record), &id);
  return id;
}

class SectionConditionsTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    ASSERT_EQ(ProSection2DAlloc(&section_), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProSectionIntentManagerModeSet(section_, PRO_B_TRUE), PRO_TK_NO_ERROR);
    support::AddLine(section_, 0, 0, 30, 4);    // 1
    support::AddLine(section_, 0, 20, 30, 25);  // 2
    support::AddCircle(section_, 60, 0, 5);     // 3
  }
  std::string Shown() { return SectionToJson(*UseSection(section_)).dump(); }
  double LengthOf(int id) {
    const SectionEntity& line = UseSection(section_)->entities.at(id);
    return std::hypot(line.second[0] - line.first[0], line.second[1] - line.first[1]);
  }

  ProSection section_ = nullptr;
};

TEST_F(SectionConditionsTest, WhatMakesNoSenseHasAStatusAndChangesNothing) {
  const Made length = Dimension(section_, {1}, kLength);
  ASSERT_EQ(length.status, PRO_TK_NO_ERROR);
  ProSection other = nullptr;
  ASSERT_EQ(ProSection2DAlloc(&other), PRO_TK_NO_ERROR);
  support::AddLine(other, 0, 0, 1, 0);
  ProModelitem plane = PlaneOf(*part_, L"FRONT");
  ProSelection of_item = nullptr, none = nullptr;
  ASSERT_EQ(ProSelectionAlloc(nullptr, &plane, &of_item), PRO_TK_NO_ERROR);
  const auto select = [&](int entity, int point) {
    return ProSectionEntityGetSelected(section_, entity, static_cast<ProSectionPointType>(point), nullptr, -1,
                                       &none);
  };
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  const std::string before = Shown();
  const struct {
    const char* what;
    ProError status, expected;
  } cases[] = {
      {"no such point", select(1, 5), PRO_TK_BAD_INPUTS},
      {"no point", select(1, 0), PRO_TK_BAD_INPUTS},
      {"no such entity", select(4, kWhole), PRO_TK_E_NOT_FOUND},
      {"a selection of another section", Constrain(section_, {Select(other, 1)}, kHorizontal),
       PRO_TK_BAD_INPUTS},
      {"a selection of an item", Constrain(section_, {of_item}, kHorizontal), PRO_TK_BAD_INPUTS},
      {"more than there are", Constrain(section_, {Select(section_, 1)}, kParallel, 2), PRO_TK_BAD_INPUTS},
      {"none", Constrain(section_, {Select(section_, 1)}, kHorizontal, 0), PRO_TK_BAD_INPUTS},
      {"one too few", Constrain(section_, {Select(section_, 1)}, kParallel), PRO_TK_GENERAL_ERROR},
      {"an unknown type", Constrain(section_, {Select(section_, 1)}, 9), PRO_TK_GENERAL_ERROR},
      {"a circle", Constrain(section_, {Select(section_, 3)}, kHorizontal), PRO_TK_GENERAL_ERROR},
      {"an end", Constrain(section_, {Select(section_, 1, kStart)}, kHorizontal), PRO_TK_GENERAL_ERROR},
      {"a dimension of nothing", Dimension(section_, {}, kLength).status, PRO_TK_BAD_INPUTS},
      {"of an entity that isn't there", Dimension(section_, {9}, kLength).status, PRO_TK_BAD_INPUTS},
      {"of no such point", Dimension(section_, {1}, kLength, 9).status, PRO_TK_BAD_INPUTS},
      {"of an end alone", Dimension(section_, {1}, kPointDistance, kEnd).status, PRO_TK_GENERAL_ERROR},
      {"a line's radius", Dimension(section_, {1}, kRadius).status, PRO_TK_GENERAL_ERROR},
      {"an angle of one line", Dimension(section_, {1}, kAngle).status, PRO_TK_GENERAL_ERROR},
      {"an unknown type of dimension", Dimension(section_, {1}, 5).status, PRO_TK_GENERAL_ERROR},
      {"the same dimension again", Dimension(section_, {1}, kLength).status, PRO_TK_GENERAL_ERROR},
      {"no value", ProSecdimValueSet(section_, length.id, kNaN), PRO_TK_BAD_INPUTS},
      {"no length", ProSecdimValueSet(section_, length.id, 0), PRO_TK_GENERAL_ERROR},
      {"no such dimension", ProSecdimValueSet(section_, 7, 5), PRO_TK_E_NOT_FOUND},
      {"no section", ProSecdimValueSet(nullptr, 1, 5), PRO_TK_BAD_INPUTS},
  };
  for (const auto& each : cases) EXPECT_EQ(each.status, each.expected) << each.what;
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(Shown(), before);
  ASSERT_EQ(ProSectionIntentManagerModeSet(section_, PRO_B_FALSE), PRO_TK_NO_ERROR);
  EXPECT_EQ(Constrain(section_, {Select(section_, 1)}, kHorizontal), PRO_TK_BAD_CONTEXT);
}

TEST_F(SectionConditionsTest, ADimensionMeasuresFirstAndMovesWhenItIsSet) {
  const Made length = Dimension(section_, {1}, kLength), radius = Dimension(section_, {3}, kRadius);
  const auto& dimensions = UseSection(section_)->dimensions;
  EXPECT_NEAR(dimensions.at(length.id).value, std::hypot(30, 4), 1e-9);
  EXPECT_NEAR(LengthOf(1), std::hypot(30, 4), 1e-9);
  EXPECT_THAT(dimensions.at(length.id).place, ElementsAre(3, 4));
  ASSERT_EQ(ProSecdimValueSet(section_, length.id, 50), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProSecdimValueSet(section_, radius.id, 8), PRO_TK_NO_ERROR);
  EXPECT_NEAR(LengthOf(1), 50, 1e-6);
  EXPECT_NEAR(UseSection(section_)->entities.at(3).radius, 8, 1e-6);
  EXPECT_EQ(dimensions.at(length.id).value, 50);
}

TEST_F(SectionConditionsTest, SectionsInMetresAreSolvedAsExactly) {
  ASSERT_EQ(ProSection2DAlloc(&section_), PRO_TK_NO_ERROR);
  support::AddLine(section_, 0.001, 0.002, 0.004, 0.006);
  const Made length = Dimension(section_, {1}, kLength);
  EXPECT_NEAR(UseSection(section_)->dimensions.at(length.id).value, 0.005, 1e-12);  // 3, 4, 5
  ASSERT_EQ(ProSecdimValueSet(section_, length.id, 0.01), PRO_TK_NO_ERROR);
  EXPECT_NEAR(LengthOf(1), 0.01, 1e-11);
}

TEST_F(SectionConditionsTest, AnEntityTakesAlongWhatHeldOnToIt) {
  ASSERT_EQ(Constrain(section_, {Select(section_, 1), Select(section_, 2)}, kParallel), PRO_TK_NO_ERROR);
  ASSERT_EQ(Constrain(section_, {Select(section_, 1)}, kHorizontal), PRO_TK_NO_ERROR);
  ASSERT_EQ(Dimension(section_, {2}, kLength).status, PRO_TK_NO_ERROR);
  ASSERT_EQ(ProSectionEntityDelete(section_, 2), PRO_TK_NO_ERROR);
  EXPECT_EQ(UseSection(section_)->constraints.size(), 1u);
  EXPECT_TRUE(UseSection(section_)->dimensions.empty());
  EXPECT_EQ(ProSectionSolve(section_, nullptr), PRO_TK_NO_ERROR);
}

TEST_F(SectionConditionsTest, ASelectionOfAPartIsFreedAsAnyAndIsNoItem) {
  ProSelection selection = Select(section_, 1, kEnd);
  ProModelitem item{};
  EXPECT_NE(ProSelectionModelitemGet(selection, &item), PRO_TK_NO_ERROR);
  ProSelection freed = selection;
  EXPECT_EQ(ProSelectionFree(&selection), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSelectionFree(&freed), PRO_TK_INVALID_PTR);
  EXPECT_THAT(TakeViolations(), ElementsAre(HasSubstr("ProSelectionFree")));
}

TEST_F(SectionConditionsTest, TextsAreGivenBackAsTheyWereAdded) {
  EXPECT_EQ(AddText(section_, L" \t "), -1) << "blank";
  const int id = AddText(section_, L"Ä1", L"DejaVu Serif");
  Pro2dEntdef* entity = nullptr;
  ASSERT_EQ(ProSectionEntityGet(section_, id, &entity), PRO_TK_NO_ERROR);
  const auto& text = *reinterpret_cast<Pro2dTextdef*>(entity);
  EXPECT_EQ(text.type, PRO_2D_TEXT);
  EXPECT_STREQ(text.text, L"Ä1");
  EXPECT_STREQ(text.font, L"DejaVu Serif");
  EXPECT_THAT(text.corner2, ElementsAre(12, 10));
}

TEST_F(SectionConditionsTest, EverythingSurvivesSavingAndRetrieving) {
  const ProFeature sketch = Sketch(*part_, L"S", L"FRONT", [](ProSection section) {
    support::AddLine(section, 0, 0, 30, 4);
    AddText(section, L"Ä1", L"DejaVu Serif");
    ProSectionIntentManagerModeSet(section, PRO_B_TRUE);
    EXPECT_EQ(Constrain(section, {Select(section, 1)}, kHorizontal), PRO_TK_NO_ERROR);
    const Made length = Dimension(section, {1}, kLength);
    EXPECT_EQ(ProSecdimValueSet(section, length.id, 40), PRO_TK_NO_ERROR);
  });
  const std::string before = SectionToJson(*part_->FindFeature(sketch.id)->section).dump();
  ASSERT_EQ(ProMdlSave(Handle(*part_)), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProMdlErase(Handle(*part_)), PRO_TK_NO_ERROR);
  ASSERT_EQ(RetrieveModel(L"part", PRO_MDL_PART, part_), PRO_TK_NO_ERROR);
  const SectionData& section = *part_->FindFeature(sketch.id)->section;
  EXPECT_EQ(SectionToJson(section).dump(), before);
  EXPECT_EQ(section.constraints.at(1).type, kHorizontal);
  EXPECT_EQ(section.dimensions.at(1).value, 40);
}

}  // namespace
}  // namespace bench

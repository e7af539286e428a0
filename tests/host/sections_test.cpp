// Sections: what the calls refuse, and what comes of a refusal.
#include <ProArray.h>
#include <ProSecconstr.h>
#include <ProSection.h>
#include <ProSelection.h>
#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "bench/host/calls/section.h"
#include "bench/host/storage/section_json.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using testing::ElementsAre;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kPi = std::numbers::pi;

class SectionsTest : public support::BenchTest {
 protected:
  void SetUp() override {
    BenchTest::SetUp();
    ASSERT_EQ(ProSection2DAlloc(&section_), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProSectionIntentManagerModeSet(section_, PRO_B_TRUE), PRO_TK_NO_ERROR);
  }

  template <typename Record>
  ProError Add(Record record) {
    int id = -1;
    return ProSectionEntityAdd(section_, reinterpret_cast<Pro2dEntdef*>(&record), &id);
  }
  ProError AddSpline(std::vector<std::array<double, 2>> points) {
    auto* first = reinterpret_cast<Pro2dPnt*>(points.data());
    return Add(Pro2dSplinedef{PRO_2D_SPLINE, 0, 0, 0, static_cast<unsigned>(points.size()), first});
  }
  std::vector<int> Ids() {
    int* ids = nullptr;
    EXPECT_EQ(ProSectionEntityIdsGet(section_, &ids), PRO_TK_NO_ERROR);
    ProArray array = ids;
    int count = 0;
    EXPECT_EQ(ProArraySizeGet(array, &count), PRO_TK_NO_ERROR);
    std::vector<int> all(ids, ids + count);
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
    return all;
  }
  // What regenerating gives, and how many errors it counts.
  std::pair<ProError, int> Regenerated() {
    ProWSecerror errors = nullptr;
    EXPECT_EQ(ProSecerrorAlloc(&errors), PRO_TK_NO_ERROR);
    const ProError status = ProSectionRegenerate(section_, &errors);
    int count = -1;
    EXPECT_EQ(ProSecerrorCount(&errors, &count), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSecerrorFree(&errors), PRO_TK_NO_ERROR);
    return {status, count};
  }

  ProSection section_ = nullptr;
};

TEST_F(SectionsTest, IdsCountUpAndAreNeverReused) {
  EXPECT_EQ(support::AddPoint(section_, 0, 0), 1);
  EXPECT_EQ(support::AddLine(section_, 0, 0, 1, 0), 2);
  EXPECT_EQ(support::AddCircle(section_, 0, 0, 1), 3);
  EXPECT_EQ(ProSectionEntityDelete(section_, 3), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSectionEntityDelete(section_, 1), PRO_TK_NO_ERROR);
  EXPECT_EQ(support::AddCenterline(section_, 0, 0, 0, 1), 4);
  EXPECT_THAT(Ids(), ElementsAre(2, 4));
  EXPECT_EQ(ProSectionEntityDelete(section_, 1), PRO_TK_E_NOT_FOUND);
}

TEST_F(SectionsTest, RefuseWhatNoSectionCanHold) {
  EXPECT_EQ(Add(Pro2dPntdef{PRO_2D_POINT, {kNaN, 0}}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Add(Pro2dLinedef{PRO_2D_LINE, {0, 0}, {0, kInfinity}}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Add(Pro2dClinedef{PRO_2D_CENTER_LINE, {0, -kInfinity}, {0, 1}}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Add(Pro2dCircledef{PRO_2D_CIRCLE, {0, 0}, 0}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Add(Pro2dCircledef{PRO_2D_CIRCLE, {0, 0}, kNaN}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Add(Pro2dArcdef{PRO_2D_ARC, {0, 0}, 0, 1, -2}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Add(Pro2dArcdef{PRO_2D_ARC, {0, 0}, 1, 0, 2}), PRO_TK_BAD_INPUTS) << "ends before it starts";
  EXPECT_EQ(Add(Pro2dEllipsedef{PRO_2D_ELLIPSE, {0, 0}, 1, -1}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(AddSpline({{0, 0}}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(AddSpline({{0, 0}, {1, kNaN}}), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Add(Pro2dPntdef{static_cast<Pro2dEntType>(6), {0, 0}}), PRO_TK_BAD_INPUTS);
  EXPECT_THAT(Ids(), ElementsAre());
}

TEST_F(SectionsTest, RegenerationCountsEntitiesWithoutExtent) {
  EXPECT_EQ(Regenerated(), std::pair(PRO_TK_NO_ERROR, 0));
  support::AddLine(section_, 0, 0, 1, 0);
  support::AddArc(section_, 0, 0, 1, -kPi, kPi);
  support::AddArc(section_, 0, 0, 1, 7, 8);
  EXPECT_EQ(AddSpline({{0, 0}, {1, 0}, {0, 1}, {0, 0}}), PRO_TK_NO_ERROR);
  EXPECT_EQ(Regenerated(), std::pair(PRO_TK_NO_ERROR, 0)) << "full turns and angles from anywhere are fine";
  support::AddLine(section_, 2, 2, 2, 2);
  support::AddCenterline(section_, 1, 0, 1, 0);
  support::AddArc(section_, 0, 0, 1, 0.5, 0.5);
  support::AddArc(section_, 0, 0, 1, 0, 4 * kPi);
  EXPECT_EQ(AddSpline({{0, 0}, {1, 1}, {1, 1}}), PRO_TK_NO_ERROR);
  EXPECT_EQ(Regenerated(), std::pair(PRO_TK_GENERAL_ERROR, 5));
}

constexpr int kWhole = 1, kEnd = 3;
constexpr int kHorizontal = 1, kParallel = 7, kLength = 1, kPointDistance = 2, kRadius = 3;

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
  const std::string before = Shown();
  const struct {
    const char* what;
    ProError status, expected;
  } cases[] = {
      {"no such point", select(1, 5), PRO_TK_BAD_INPUTS},
      {"no such entity", select(4, kWhole), PRO_TK_E_NOT_FOUND},
      {"a selection of another section", Constrain(section_, {Select(other, 1)}, kHorizontal),
       PRO_TK_BAD_INPUTS},
      {"a selection of an item", Constrain(section_, {of_item}, kHorizontal), PRO_TK_BAD_INPUTS},
      {"more than there are", Constrain(section_, {Select(section_, 1)}, kParallel, 2), PRO_TK_BAD_INPUTS},
      {"an unknown type", Constrain(section_, {Select(section_, 1)}, 9), PRO_TK_GENERAL_ERROR},
      {"a circle", Constrain(section_, {Select(section_, 3)}, kHorizontal), PRO_TK_GENERAL_ERROR},
      {"a dimension of nothing", Dimension(section_, {}, kLength).status, PRO_TK_BAD_INPUTS},
      {"of an entity that isn't there", Dimension(section_, {9}, kLength).status, PRO_TK_BAD_INPUTS},
      {"of no such point", Dimension(section_, {1}, kLength, 9).status, PRO_TK_BAD_INPUTS},
      {"of an end alone", Dimension(section_, {1}, kPointDistance, kEnd).status, PRO_TK_GENERAL_ERROR},
      {"a line's radius", Dimension(section_, {1}, kRadius).status, PRO_TK_GENERAL_ERROR},
      {"an unknown type of dimension", Dimension(section_, {1}, 5).status, PRO_TK_GENERAL_ERROR},
      {"the same dimension again", Dimension(section_, {1}, kLength).status, PRO_TK_GENERAL_ERROR},
      {"no value", ProSecdimValueSet(section_, length.id, kNaN), PRO_TK_BAD_INPUTS},
      {"no such dimension", ProSecdimValueSet(section_, 7, 5), PRO_TK_E_NOT_FOUND},
  };
  for (const auto& each : cases) EXPECT_EQ(each.status, each.expected) << each.what;
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(AddText(section_, L" \t "), -1) << "blank";
  EXPECT_EQ(Shown(), before);
  ASSERT_EQ(ProSectionIntentManagerModeSet(section_, PRO_B_FALSE), PRO_TK_NO_ERROR);
  EXPECT_EQ(Constrain(section_, {Select(section_, 1)}, kHorizontal), PRO_TK_BAD_CONTEXT);
}

TEST_F(SectionConditionsTest, SectionsInMetresAreSolvedAsExactly) {
  ASSERT_EQ(ProSection2DAlloc(&section_), PRO_TK_NO_ERROR);
  support::AddLine(section_, 0.001, 0.002, 0.004, 0.006);
  const Made length = Dimension(section_, {1}, kLength);
  EXPECT_NEAR(UseSection(section_)->dimensions.at(length.id).value, 0.005, 1e-12);  // 3, 4, 5
  ASSERT_EQ(ProSecdimValueSet(section_, length.id, 0.01), PRO_TK_NO_ERROR);
  const SectionEntity& line = UseSection(section_)->entities.at(1);
  EXPECT_NEAR(std::hypot(line.second[0] - line.first[0], line.second[1] - line.first[1]), 0.01, 1e-11);
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

}  // namespace
}  // namespace bench

#include <ProArray.h>
#include <ProSection.h>
#include <gmock/gmock.h>

#include <limits>
#include <numbers>

#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

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

TEST_F(SectionsTest, GiveEachEntityBackAsItWasAdded) {
  ASSERT_EQ(Add(Pro2dEllipsedef{PRO_2D_ELLIPSE, {4, 5}, 6, 7}), PRO_TK_NO_ERROR);
  ASSERT_EQ(AddSpline({{0, 1}, {2, 3}, {4, 9}}), PRO_TK_NO_ERROR);
  Pro2dEntdef *ellipse = nullptr, *spline = nullptr, *none = nullptr;
  ASSERT_EQ(ProSectionEntityGet(section_, 1, &ellipse), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProSectionEntityGet(section_, 2, &spline), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSectionEntityGet(section_, 3, &none), PRO_TK_E_NOT_FOUND);
  const auto& got_ellipse = *reinterpret_cast<Pro2dEllipsedef*>(ellipse);
  EXPECT_THAT(got_ellipse.origin, ElementsAre(4, 5));
  EXPECT_THAT((std::array{got_ellipse.x_radius, got_ellipse.y_radius}), ElementsAre(6, 7));
  const auto& got_spline = *reinterpret_cast<Pro2dSplinedef*>(spline);
  ASSERT_EQ(got_spline.n_points, 3u);
  EXPECT_THAT(got_spline.point_arr[2], ElementsAre(4, 9));
}

TEST_F(SectionsTest, ForeignHandlesAreViolations) {
  int id = 0;
  Pro2dPntdef point{PRO_2D_POINT, {0, 0}};
  EXPECT_EQ(
      ProSectionEntityAdd(reinterpret_cast<ProSection>(&id), reinterpret_cast<Pro2dEntdef*>(&point), &id),
      PRO_TK_INVALID_PTR);
  ProWSecerror errors = nullptr;
  ASSERT_EQ(ProSecerrorAlloc(&errors), PRO_TK_NO_ERROR);
  ProWSecerror freed = errors;
  EXPECT_EQ(ProSecerrorFree(&errors), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSectionRegenerate(section_, &freed), PRO_TK_INVALID_PTR);
  EXPECT_THAT(TakeViolations(),
              ElementsAre(HasSubstr("ProSectionEntityAdd"), HasSubstr("ProSectionRegenerate")));
}

}  // namespace
}  // namespace bench

// The sweep operation: solids, the ladder of redefinitions, failures; and the loft, which there is only by
// name.
#include <numbers>

#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

using std::numbers::pi;
using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr const wchar_t* kSweep = L"api_feature_sweep";
constexpr const wchar_t* kAlong = LR"({"profile_sketch_name":"PROFILE","path_sketch_name":"PATH"})";

class SweepOperation : public FeatureTest {
 protected:
  void NewPath(const std::wstring& points) {
    CreateSketch(L"PATH", L"FRONT");
    Draw(L"api_sketch_polyline", L"PATH", Format(LR"("points":%s)", points));
  }
  // A circle about (4, 0) with the radius 1, and a path of 30 to the right and 20 up.
  void CircleAndPath() {
    CreateSketch(L"PROFILE", L"TOP");
    DrawCircle(L"PROFILE");
    NewPath(L"[[0,0],[30,0],[30,20]]");
  }
  // The labels and the incomplete flags of the redefinitions so far.
  static std::vector<std::wstring> Rungs() {
    std::vector<std::wstring> rungs;
    for (const auto& [side, text] : CapturedLog()) {
      if (!text.starts_with(L"Feature Sweep redefine(")) continue;
      const std::size_t from = text.find(L'('), flag = text.find(L"incomplete=");
      rungs.push_back(text.substr(from + 1, text.find(L')') - from - 1) + L" " + text.substr(flag + 11, 1));
    }
    return rungs;
  }
  static std::vector<std::wstring> SweepLog() {
    std::vector<std::wstring> lines;
    for (const auto& [side, text] : CapturedLog())
      if (text.starts_with(L"Feature Sweep") || text.starts_with(L"Feature Create")) lines.push_back(text);
    return lines;
  }
  // Makes redefinitions fail, and tells what becomes of the sweep.
  void ExpectIncomplete(int status, int incomplete, const std::vector<std::wstring>& rungs) {
    const ModelState before = State();
    ClearCapturedLog();
    ExpectFailure(kSweep, kAlong,
                  Format(L"Creo could not complete the sweep from profile 'PROFILE' along path 'PATH' "
                         L"(status=%d, incomplete=%d). Check D:\\VekCreoAddin.log.",
                         status, incomplete));
    EXPECT_THAT(Rungs(), ElementsAreArray(rungs));
    EXPECT_EQ(State(), before);
  }
};

TEST_F(SweepOperation, ACircleIsCentredOnThePath) {
  CircleAndPath();
  // A line beside it doesn't count.
  Draw(L"api_sketch_line_two_points", L"PROFILE", LR"("x1":7,"y1":0,"x2":9,"y2":9)");
  Succeed(kSweep, kAlong);
  // Round the corner the mitred tube is as long as its middle: 50. It reaches 1 beyond it on each side.
  EXPECT_NEAR(Volume(), 50 * pi, 1e-4);
  EXPECT_NEAR(Outline().low[1], -1, 1e-6);
  EXPECT_NEAR(Outline().high[0], 31, 1e-6);
  EXPECT_NEAR(Outline().high[1], 20, 1e-6);
}

TEST_F(SweepOperation, ARectangleStaysWhereItIsOnTheCrosshairs) {
  Rectangle(L"PROFILE", L"XY", 1, 2, 5, 4);
  NewPath(L"[[0,0],[40,0]]");
  Succeed(kSweep, kAlong);
  // Along +X the section's +y is FRONT's normal +Z, and its +x is y × tangent = +Y.
  EXPECT_NEAR(Volume(), 4 * 2 * 40, 1e-6);
  ExpectBox({{0, 1, 2}, {40, 5, 4}});
}

TEST_F(SweepOperation, ProfilesWithoutUseGiveTheCircleOfFiveMillimetres) {
  CreateSketch(L"PROFILE", L"TOP");
  Draw(L"api_sketch_polyline", L"PROFILE", LR"("points":[[0,0],[9,9]],"construction":true)");
  NewPath(L"[[0,0],[40,0]]");
  Current().length_unit = bench::LengthUnit::kInch;
  ClearCapturedLog();
  Succeed(kSweep, kAlong);
  // The path was drawn in a part of millimetres: in inches it is 25.4 times as long.
  EXPECT_NEAR(Volume(), 25 * pi * 40 * 25.4, 1e-3);
  EXPECT_EQ(CountCaptured(L"Feature Sweep: fallback circle-at-origin status=0 id=1 r=0.19685"), 1);
}

TEST_F(SweepOperation, ACutTakesTheTubeAway) {
  Block(40, 20, 10);
  CreateSketch(L"PROFILE", L"TOP");
  DrawCircle(L"PROFILE");
  NewPath(L"[[0,10],[40,10]]");
  Succeed(kSweep, LR"({"profile_sketch_name":"PROFILE","path_sketch_name":"PATH","operation":"remove"})");
  // Half of the tube lies in the block.
  EXPECT_NEAR(Volume(), 40 * 20 * 10 - 40 * pi / 2, 1e-4);
  EXPECT_THAT(TreeOf(Current().features.back().get()),
              testing::AllOf(testing::StartsWith("386(388=4 5528=128 3165(1176(15(725=26 726(2124=108))) "
                                                 "1159(1170=0 1171=1 1649=0 "),
                             testing::EndsWith(" 3164(1168=8388608 897(725=25)) 1964 1956=917 2023=916 "
                                               "3176=0 499=1)")));
}

TEST_F(SweepOperation, AnswersLogAndHistoryFollowTheWay) {
  CircleAndPath();
  const int path = FeatureNamed(L"PATH")->id;
  ClearHistory();
  ClearCapturedLog();
  const auto result = Run(kSweep, kAlong);
  ExpectCreated(result, L"SWEEP", L"Sweep 'SWEEP' created (profile 'PROFILE' along path 'PATH').");
  const int id = FeatureNamed(L"SWEEP")->id;
  EXPECT_THAT(
      SweepLog(),
      ElementsAre(
          Format(L"Feature Sweep: trajectory FEATURE_INSTR featId=%d regen=0 sels=2", path),
          Format(L"Feature Create [sweep]: status=0 errCount=0 featId=%d", id),
          L"Feature Sweep: section circle-at-origin status=0 id=1 r=1",
          L"Feature Sweep: section dia-dim status=0 dimId=1",
          L"Feature Sweep[finalize]: solve=0 (errs=0) regen=0 (errs=0)",
          L"Feature Sweep: set section METHOD=PRO_SEC_SKETCH", L"Feature Sweep: section entity count=1",
          L"Feature Sweep: removed FRM_START_X DIRECTION_REFERENCE",
          L"Feature Sweep: set FRM_USER_X=DEFAULT_START_X",
          Format(L"Feature Sweep redefine(SECTION+DEFAULT_X): status=0 errCount=0 incomplete=0 featId=%d",
                 id)));
  // The name is taken now, and the next one gets a number.
  EXPECT_EQ(Create(kSweep, kAlong), L"Sweep 1");
}

TEST_F(SweepOperation, TheFirstRungThatCompletesEndsTheLadder) {
  CircleAndPath();
  std::vector<std::wstring> climbed;
  for (const wchar_t* rung :
       {L"SECTION+DEFAULT_X", L"SECTION+USER_X", L"COMPLETE", L"DEFINE_MISS", L"EMPTY_OPTS"}) {
    ClearCapturedLog();
    if (!climbed.empty())
      faults().NoEffect("ProFeatureWithoptionsRedefine", 1, static_cast<int>(climbed.size()));
    const std::wstring name = Create(kSweep, kAlong);
    climbed.push_back(Format(L"%s 0", rung));
    EXPECT_THAT(Rungs(), ElementsAreArray(climbed));
    climbed.back().back() = L'1';
    EXPECT_NEAR(Volume(), 50 * pi, 1e-4);
    Delete(name);
  }
  // A section that the host lost in between is drawn again.
  EXPECT_EQ(CountCaptured(L"Feature Sweep: re-extract lost section geometry; rebuilding"), 1);
  EXPECT_EQ(CountCaptured(L"Feature Sweep: set FRM_USER_X=USER_START_X dir status=0"), 1);
}

TEST_F(SweepOperation, ARefusedRungChangesTheNextOnes) {
  CircleAndPath();
  // "COMPLETE" is left out behind a status.
  faults().Fail("ProFeatureWithoptionsRedefine", PRO_TK_BAD_CONTEXT, 1, 9);
  ExpectIncomplete(-8, 1, {L"SECTION+DEFAULT_X 1", L"SECTION+USER_X 1", L"DEFINE_MISS 1", L"EMPTY_OPTS 1"});
  // Without the planes there is no start direction, and without an array no last rung.
  faults().Clear();
  faults().Fail("ProModelitemByNameInit", PRO_TK_E_NOT_FOUND, 1, 6);
  faults().NoEffect("ProFeatureWithoptionsRedefine", 1, 9);
  // The creation's array and those of the three rungs come before.
  faults().Fail("ProArrayAlloc", PRO_TK_OUT_OF_MEMORY, 5);
  ExpectIncomplete(0, 1, {L"SECTION+DEFAULT_X 1", L"COMPLETE 1", L"DEFINE_MISS 1"});
}

TEST_F(SweepOperation, WhatTheGeometryRefusesLeavesNoFeature) {
  CreateSketch(L"PROFILE", L"TOP");
  // A circle with a radius of 25 doesn't go round the corner.
  Draw(L"api_sketch_circle_center_radius", L"PROFILE", LR"("cx":0,"cy":0,"radius":25)");
  NewPath(L"[[0,0],[30,0],[30,20]]");
  ExpectIncomplete(
      -1, 1, {L"SECTION+DEFAULT_X 1", L"SECTION+USER_X 1", L"COMPLETE 1", L"DEFINE_MISS 1", L"EMPTY_OPTS 1"});
}

TEST_F(SweepOperation, ASectionThatIsMissingIsAskedFor) {
  CircleAndPath();
  ClearCapturedLog();
  // The profile's section is the first, that of the new feature the second.
  faults().Fail("ProElementSpecialvalueGet", PRO_TK_E_NOT_FOUND, 2);
  Succeed(kSweep, kAlong);
  EXPECT_THAT(Rungs(), ElementsAre(L"INIT-SKETCHER 1", L"SECTION+DEFAULT_X 0"));
}

TEST_F(SweepOperation, ATrajectoryThatIsNoWholeIsItsFirstCurve) {
  CircleAndPath();
  ClearCapturedLog();
  faults().Fail("ProCrvcollectionRegenerate", PRO_TK_GENERAL_ERROR);
  Succeed(kSweep, kAlong);
  EXPECT_NEAR(Volume(), 30 * pi, 1e-4);
  EXPECT_TRUE(SweepLog().at(1).starts_with(L"Feature Sweep: trajectory single ref type=62 id="));
}

TEST_F(SweepOperation, ArgumentsAreChecked) {
  CircleAndPath();
  const wchar_t* const unknown =
      L"Sketched curve feature '?' not found. Create/commit it with api_sketch_* first.";
  ExpectRefusals({{kSweep, LR"({"profile_sketch_name":"?","path_sketch_name":"?","operation":"intersect"})",
                   L"Creo feature operations do not support operation='intersect'. Use 'join' or 'cut'."},
                  {kSweep, LR"({"profile_sketch_name":"PROFILE","path_sketch_name":"?"})", unknown}});
}

TEST_F(SweepOperation, ALoftIsUnavailable) {
  Succeed(L"api_document_close", Format(LR"({"name_or_path":"%s"})", Current().name));
  ClearCapturedLog();
  ExpectFailure(L"api_feature_loft", L"{}", L"api_feature_loft is unavailable on Creo.");
  EXPECT_EQ(CountCaptured(L"Feature Loft: unavailable."), 1);
}

}  // namespace
}  // namespace vek::support

// The draft operation: which faces it tilts and about what, one feature a face, and what becomes of the faces
// that the host won't take.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>

#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kDraft = L"api_edge_draft";

double Tan(double degrees) {
  return std::tan(degrees * std::numbers::pi / 180);
}

class DraftOperation : public FeatureOnABlock {
 protected:
  CreoMcpOperationResult Draft(const std::wstring& more) {
    return Run(kDraft, Format(LR"({"feature_name":"%s"%s})", block_, more));
  }
  // Nothing is drafted, and the message ends with `last`.
  void ExpectNone(const wchar_t* pull, int sides, const std::wstring& last) {
    const ModelState before = State();
    const auto result = Draft(Format(LR"(,"angle_deg":5,"pull_direction":"%s")", pull));
    EXPECT_FALSE(result.success);
    EXPECT_EQ(EncodeUtf8(result.message),
              EncodeUtf8(Format(L"No draft created on '%s' for pull_direction '%s' (checked %u side face(s), "
                                L"skipped %d). Use the feature extrude axis as pull_direction. Last: %s",
                                block_, pull, static_cast<unsigned>(sides), sides, last)));
    EXPECT_EQ(State(), before);
  }
  std::vector<std::wstring> Drafts() {
    std::vector<std::wstring> names;
    for (const auto& feature : Current().features)
      if (feature->type == 927) names.push_back(feature->name);
    return names;
  }
};

TEST_F(DraftOperation, TiltsTheWallsAboutTheirEdgesOnTheLowerEndFace) {
  const struct {
    const wchar_t* pull;
    double a, b, h;  // the lower end face, and the height over it
    double angle;
  } cases[] = {{L"", 40, 20, 10, 3},      {L" Top ", 40, 20, 10, -3}, {L"yz", 20, 10, 40, -3},
               {L"RIGHT", 20, 10, 40, 5}, {L"Y", 40, 10, 20, 3},      {L"XZ", 40, 10, 20, -3}};
  for (const auto& [pull, a, b, h, angle] : cases) {
    // Over each length of its hinge a wall loses a triangle of the legs h and h tan(angle).
    const double triangle = h * h * Tan(angle) / 2;
    double taken = 0;
    for (int wall = 1; wall <= 4; ++wall) {
      SCOPED_TRACE(EncodeUtf8(pull) + " " + std::to_string(wall));
      if (wall > 1) faults().Fail("ProFeatureWithoptionsCreate", PRO_TK_GENERAL_ERROR, 1, wall - 1);
      if (wall < 4) faults().Fail("ProFeatureWithoptionsCreate", PRO_TK_GENERAL_ERROR, wall + 1, 4);
      const auto result = Draft(Format(LR"(,"angle_deg":%g,"pull_direction":"%s")", angle, pull));
      faults().Clear();
      EXPECT_EQ(EncodeUtf8(result.message),
                EncodeUtf8(Format(L"Draft applied: 1 feature(s), last='Draft 1', %.3g deg pull=%s on '%s'.",
                                  angle, *pull == 0 ? L"Z" : pull, block_)));
      taken += 8000 - Volume();
      EXPECT_NEAR(
          std::min(std::fabs(8000 - Volume() - triangle * a), std::fabs(8000 - Volume() - triangle * b)), 0,
          1e-5);
      if (result.success) Delete(L"Draft 1");
    }
    EXPECT_NEAR(taken, triangle * 2 * (a + b), 1e-4) << EncodeUtf8(pull);
  }
}

TEST_F(DraftOperation, EachFaceHasAFeatureOfItsOwn) {
  const auto result = Draft(LR"(,"angle_deg":"5")");
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.dataJson, LR"({"feature_name":"Draft_2"})");
  EXPECT_THAT(Drafts(), testing::ElementsAre(L"Draft 1", L"Draft_1", L"Draft 2", L"Draft_2"));
  for (const std::wstring& name : Drafts())
    EXPECT_EQ(TreeOf(FeatureNamed(name)),
              "386(387=927 3305=0 2154=0 2213=1 3252(3253=@1 3254=1) 2150=1 3177=1 "
              "2164(2167=2 2124=101 2171=0 2168=5))");
  // One step, with the last name only.
  ASSERT_EQ(UndoStack().size(), 1u);
  EXPECT_EQ(UndoStack().back().label, L"Create Draft_2");
  EXPECT_EQ(CountCaptured(L"CreoMcpEdge: " + result.message), 1);
}

TEST_F(DraftOperation, ADraftThatFailsToRegenerateIsTakenBack) {
  // 30 high and 4 thick: at 5° one of the long walls leans in by 30 tan 5° = 2.6, and for the other one no
  // room is left.
  Delete(block_);
  Rectangle(L"SHEET", L"XY", 0, 0, 40, 4);
  block_ = Create(L"api_feature_extrude", LR"({"sketch_name":"SHEET","distance_mm":30})");
  const auto mark = host().journal.Mark();
  const auto result = Draft(LR"(,"angle_deg":5)");
  EXPECT_EQ(
      EncodeUtf8(result.message),
      EncodeUtf8(Format(L"Draft applied: 3 feature(s), last='Draft 2', 5 deg pull=Z on '%s'.", block_)));
  EXPECT_THAT(Drafts(), testing::ElementsAre(L"Draft 1", L"Draft_1", L"Draft 2"));
  EXPECT_EQ(CallsSince(mark, {"ProFeatureDelete"}).size(), 1u);
  for (const std::wstring& name : Drafts()) Delete(name);

  // A state that can't be asked for counts as sound.
  faults().Fail("ProFeatureStatusflagsGet", PRO_TK_GENERAL_ERROR, 1, 4);
  EXPECT_TRUE(Draft(LR"(,"angle_deg":5)").success);
  EXPECT_EQ(Drafts().size(), 4u);
}

TEST_F(DraftOperation, ADraftOnWhatFailedIsTakenBackToo) {
  const auto fail_all = [this] {
    Current().features.back()->status = PRO_FEAT_UNREGENERATED;
    FeatureNamed(block_)->status = PRO_FEAT_UNREGENERATED;
  };
  for (int face = 1; face <= 4; ++face) faults().Before("ProFeatureStatusflagsGet", fail_all, face);
  ExpectNone(L"Z", 4, L"Draft feature failed to regenerate for one of the side faces.");
}

TEST_F(DraftOperation, PlanesThatLieAcrossThePullAreEndFaces) {
  // A roof over the length 10 whose normal leans by `slope` from +Z or -Z; the cosine of 31° is 0.857 and
  // that of 32° is 0.848. Five other faces, of which the bottom is an end face.
  const std::tuple<double, int> cases[] = {{31, 4}, {32, 5}};
  for (const auto& [slope, sides] : cases) {
    SCOPED_TRACE(slope);
    const std::wstring sketch = Format(L"ROOF%d", static_cast<int>(slope));
    CreateSketch(sketch, L"XZ");
    Draw(L"api_sketch_polyline", sketch,
         Format(LR"("points":[[0,0],[10,0],[10,%s],[0,5]],"closed":true)", Number(5 + 10 * Tan(slope))));
    Delete(block_);
    block_ = Create(L"api_feature_extrude", Format(LR"({"sketch_name":"%s","distance_mm":8})", sketch));
    faults().Fail("ProSrfcollectionAlloc", PRO_TK_GENERAL_ERROR, 1, 1000);
    ExpectNone(L"Z", sides, L"Failed to allocate draft surface collection.");
    faults().Clear();
  }
}

TEST_F(DraftOperation, ArgumentsAreChecked) {
  const wchar_t* const limit = L"'angle_deg' must be between -30 and +30 (Creo draft limit).";
  ExpectRefusals(
      {{kDraft, LR"({"feature_name":"?","angle_deg":30.0001,"pull_direction":"W"})", limit},
       {kDraft, LR"({"feature_name":"?","angle_deg":-30})",
        L"Feature '?' not found. Call api_feature_list and use an exact name."},
       {kDraft, LR"({"feature_name":"BLOCK","angle_deg":0})", L"Feature 'BLOCK' has no selectable faces."}});
}

TEST_F(DraftOperation, AFeatureOfEndFacesAloneHasNoSides) {
  // A cut that leaves but its floor: 40 by 20, 3 deep, all over the block.
  Rectangle(L"ALL", L"XY", -5, -5, 45, 25);
  const std::wstring cut =
      Create(L"api_feature_extrude", LR"({"sketch_name":"ALL","distance_mm":3,"operation":"cut"})");
  ExpectFailure(
      kDraft, Format(LR"({"feature_name":"%s","angle_deg":5,"pull_direction":"TOP"})", cut),
      Format(L"No draftable side faces found on '%s' for pull_direction 'TOP'. Try a pull_direction "
             L"matching the extrude axis.",
             cut));
}

}  // namespace
}  // namespace vek::support

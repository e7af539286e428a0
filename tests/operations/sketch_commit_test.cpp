#include <gtest/gtest.h>

#include <tuple>

#include "addin/ops/common/history.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/sketch_fixture.h"
#include "tests/support/captured_log.h"

namespace vek::support {
namespace {

const wchar_t* const kRetry = L"Sketch Commit: retry with alternate plane/orient ref type";
const wchar_t* const kCleaning = L"Sketch Commit: deleting incomplete feature after failure/retry";

class SketchCommit : public CommittedSketchTest {};

TEST_F(SketchCommit, SoftFailuresAreAnsweredWithTheOtherFormOfReferences) {
  const std::tuple<const char*, int, const wchar_t*, bool> cases[] = {
      {"ProSelectionAlloc", 1, L"Sketch Commit: plane ProSelectionAlloc FAILED", false},
      {"ProSelectionAlloc", 2, L"Sketch Commit: orient ProSelectionAlloc FAILED", false},
      {"ProMdlToModelitem", 1, L"Sketch Commit: model selection FAILED", false},
      {"ProElemtreeElementGet", 1, L"Sketch Commit: ProElemtreeElementGet PRO_E_SKETCHER status=-10", true},
      {"ProElementSpecialvalueGet", 1, L"Sketch Commit: ProElementSpecialvalueGet status=-10", true}};
  for (const auto& [call, occurrence, line, had_incomplete_feature] : cases) {
    SCOPED_TRACE(call);
    SCOPED_TRACE(occurrence);
    ClearCapturedLog();
    ASSERT_EQ(Session(L"S").plane_item.type, PRO_SURFACE);
    faults().Fail(call, -10, occurrence);
    EXPECT_TRUE(DrawPoint(L"S").success);
    EXPECT_EQ(CountCaptured(line), 1);
    EXPECT_EQ(CountCaptured(kRetry), 1);
    EXPECT_EQ(CountCaptured(L"Sketch Commit: using PRO_DATUM_PLANE refs for plane/orient"), 1);
    EXPECT_EQ(CountCaptured(kCleaning), had_incomplete_feature ? 1 : 0);
    EXPECT_EQ(CountCaptured(L"Sketch Commit: missing PRO_E_SKETCHER after incomplete create"),
              had_incomplete_feature ? 1 : 0);
    EXPECT_EQ(Session(L"S").plane_item.type, PRO_DATUM_PLANE);
    EXPECT_EQ(Session(L"S").orient_item.type, PRO_DATUM_PLANE);
    EXPECT_EQ(Current().features.size(), features_before_);

    EXPECT_TRUE(DrawPoint(L"S").success);  // from surfaces again
    EXPECT_EQ(CountCaptured(kRetry), 1);
  }
}

TEST_F(SketchCommit, TwoSoftFailuresEndTheLadder) {
  faults().Fail("ProElementSpecialvalueGet", -4, 1, 2);
  const auto result = DrawPoint(L"S");
  EXPECT_EQ(result.message, L"Sketch feature created but Creo did not provide a PRO_E_SKETCHER section.");
  EXPECT_EQ(result.dataJson, L"null");
  EXPECT_EQ(CountCaptured(kCleaning), 2);
  EXPECT_EQ(CountCaptured(
                L"Sketch Commit END name='S' success=false hasFeature=0 message=Sketch feature created but "
                L"Creo did not provide a PRO_E_SKETCHER section."),
            1);
  ExpectUncommitted(2);
}

TEST_F(SketchCommit, NoSecondAttemptWithoutReferencesOfTheOtherForm) {
  faults().Fail("ProSelectionAlloc", -1);
  faults().Fail("ProModelitemByNameInit", -4);
  EXPECT_EQ(DrawPoint(L"S").message, L"Failed to commit sketch feature.");
  EXPECT_EQ(CountCaptured(kRetry), 1);
  ExpectUncommitted(2);
}

// The drawing itself adds one entity, so the first to be copied is the second to be added.
TEST_F(SketchCommit, HardFailuresEndAtOnce) {
  const wchar_t* const tree = L"Failed to set sketch plane references.";
  const wchar_t* const create = L"Creo could not create the sketch feature.";
  const wchar_t* const extract = L"Sketch feature created but could not extract its element tree.";
  const wchar_t* const copy = L"Failed to copy sketch entities into Creo's section.";
  const wchar_t* const redefine = L"Sketch feature created but Creo could not complete it (redefine failed).";
  const struct {
    const char* call;
    int occurrence;
    const wchar_t* message;
    const wchar_t* line;
    bool had_incomplete_feature;
    bool silent = false;  // a good status with nothing behind it
  } cases[] = {
      {"ProElementAlloc", 1, tree, L"Sketch Commit: BuildSketchElementTree FAILED", false},
      {"ProElemtreeElementAdd", 9, tree, L"Sketch AddRefToParent: id=455 ElementAdd status=-10", false},
      {"ProFeatureWithoptionsCreate", 1, create, L"Sketch Commit: create status=-10 errCount=0 featId=0",
       false},
      {"ProFeatureElemtreeExtract", 1, extract, L"Sketch Commit: extract status=-10", true},
      {"ProSectionEntityGet", 1, copy, L"Sketch Transfer: EntityGet failed id=1", true},
      {"ProSectionEntityAdd", 2, copy, L"Sketch Transfer: EntityAdd failed", true},
      {"ProFeatureElemtreeExtract", 1, extract, L"Sketch Commit: extract status=0", true, true},
      {"ProFeatureWithoptionsRedefine", 1, redefine, L"Sketch Commit: redefine status=-10 errCount=0", true}};
  std::size_t entities = 1;
  for (const auto& each : cases) {
    SCOPED_TRACE(each.call);
    SCOPED_TRACE(each.occurrence);
    ClearCapturedLog();
    const auto history = UndoStack().size();
    if (each.silent)
      faults().NoEffect(each.call, each.occurrence);
    else
      faults().Fail(each.call, -10, each.occurrence);
    const auto result = DrawPoint(L"S");
    EXPECT_EQ(EncodeUtf8(result.message), EncodeUtf8(each.message));
    EXPECT_EQ(CountCaptured(each.line), 1) << EncodeUtf8(each.line);
    EXPECT_EQ(CountCaptured(kRetry), 0);
    EXPECT_EQ(CountCaptured(kCleaning), each.had_incomplete_feature ? 1 : 0);
    EXPECT_EQ(UndoStack().size(), history);
    ExpectUncommitted(++entities);

    // The next operation commits everything, and what failed with it.
    EXPECT_EQ(Draw(L"api_sketch_point", L"S", LR"("x":3,"y":4)"), L"P:" + std::to_wstring(++entities));
    EXPECT_EQ(Section(L"S").entities.size(), entities);
    EXPECT_EQ(Current().features.size(), features_before_);
  }
}

TEST_F(SketchCommit, AnEntityThatCreoRefusesStays) {
  faults().Fail("ProSectionRegenerate", -1);
  EXPECT_TRUE(DrawPoint(L"S").success) << "that is left to the redefinition";
  EXPECT_EQ(CountCaptured(L"Sketch Commit: ProSectionRegenerate status=-1"), 1);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: regenerate non-zero; continuing to redefine"), 1);
  const auto line = Run(L"api_sketch_line_two_points", LR"({"sketch_name":"S","x1":1,"y1":1,"x2":1,"y2":1})");
  EXPECT_EQ(line.message, L"Sketch feature created but Creo could not complete it (redefine failed).");
  EXPECT_EQ(CountCaptured(L"Sketch Commit: section error count=1"), 1);
  ExpectUncommitted(3);
}

TEST_F(SketchCommit, CommitLogsItsWay) {
  EXPECT_TRUE(DrawPoint(L"S").success);
  for (const wchar_t* line :
       {L"Sketch Commit BEGIN name='S' entities=2 hasSection=1 hasFeature=1 plane='FRONT'",
        L"Sketch Commit: building incomplete tree (plane only, no sketcher)",
        L"Sketch AddRefToParent: id=451 ElementAdd status=0",
        L"Sketch AddRefToParent: id=455 ElementAdd status=0",
        L"Sketch Commit: ProFeatureWithoptionsCreate INCOMPLETE_FEAT",
        L"Sketch Commit: ProFeatureElemtreeExtract",
        L"Sketch Commit: got Creo-provided PRO_E_SKETCHER section",
        L"Sketch Commit: copying session entities into Creo section",
        L"Sketch Commit: ProSectionRegenerate status=0",
        L"Sketch Commit: ProFeatureWithoptionsRedefine NO_OPTS",
        L"Sketch Commit: redefine status=0 errCount=0",
        L"Sketch Commit END name='S' success=true hasFeature=1 message=Sketch committed."})
    EXPECT_EQ(CountCaptured(line), 1) << EncodeUtf8(line);
}

// The fourth element of a commit is the one that names the feature at its birth; the name may be set later.
TEST_F(SketchCommit, ANameThatCantBeSetAtAllFailsTheCommit) {
  faults().Fail("ProElementAlloc", -1, 4);
  faults().Fail("ProModelitemNameSet", -22);
  EXPECT_EQ(DrawPoint(L"S").message, L"Sketch created but could not rename feature to 'S' (status=-22).");
  ExpectUncommitted(2);
  faults().Fail("ProElementAlloc", -1, 4);
  EXPECT_TRUE(DrawPoint(L"S").success);
  EXPECT_NE(FeatureNamed(L"S"), nullptr);
}

TEST_F(SketchCommit, ANameTakenByAnotherFeatureIsRefused) {
  bench::Feature& other = *FeatureNamed(L"PRT_CSYS_DEF");
  other.name = L"s";
  EXPECT_EQ(DrawPoint(L"S").message,
            L"Cannot rename sketch feature to 'S': that name is already used by an existing feature (id=" +
                std::to_wstring(other.id) + L"). Choose a different sketch name.");
  ExpectUncommitted(2);
}

TEST_F(SketchCommit, ANameTakenByAnotherSketchOfTheSessionIsRefused) {
  CreateSketch(L"Other");
  features_before_ = Current().features.size();
  const int id = Session(L"Other").feature.id;
  FeatureNamed(L"Other")->name = L"S";
  // The commit deletes the feature of its own session, not the one that has the name.
  EXPECT_EQ(
      DrawPoint(L"S").message,
      L"Cannot rename sketch feature to 'S': that name is already used by another sketch in this session "
      L"(feature id=" +
          std::to_wstring(id) + L").");
  ExpectUncommitted(2);
  EXPECT_TRUE(Session(L"Other").has_feature);
}

TEST_F(SketchCommit, SixtyLinesOneByOne) {
  for (int i = 0; i < 60; ++i)
    ASSERT_EQ(Draw(L"api_sketch_line_two_points", L"S", Format(LR"("x1":%d,"x2":%d,"y2":5)", i, i)),
              Format(L"L:%d", i + 1));
  EXPECT_EQ(Section(L"S").entities.size(), 61u);
  ExpectEnds(Entity(L"S", 61), PRO_2D_LINE, {59, 0}, {59, 5});
  EXPECT_EQ(Current().features.size(), features_before_);
}

}  // namespace
}  // namespace vek::support

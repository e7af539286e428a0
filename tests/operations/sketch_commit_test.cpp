#include <gtest/gtest.h>

#include <algorithm>

#include "addin/ops/common/history.h"
#include "addin/ops/sketch/commit.h"
#include "addin/text/utf8.h"
#include "tests/operations/sketch_fixture.h"
#include "tests/support/captured_log.h"

namespace vek::support {
namespace {

const wchar_t* const kRetry = L"Sketch Commit: retry with alternate plane/orient ref type";
const wchar_t* const kCleaning = L"Sketch Commit: deleting incomplete feature after failure/retry";

class SketchCommit : public CommittedSketchTest {};

struct SoftFailure {
  const char* call;
  int occurrence;
  const wchar_t* line;
  bool had_incomplete_feature;
};

TEST_F(SketchCommit, SoftFailuresAreAnsweredWithTheOtherFormOfReferences) {
  const SoftFailure cases[] = {
      {"ProSelectionAlloc", 1, L"Sketch Commit: plane ProSelectionAlloc FAILED", false},
      {"ProSelectionAlloc", 2, L"Sketch Commit: orient ProSelectionAlloc FAILED", false},
      {"ProMdlToModelitem", 1, L"Sketch Commit: model selection FAILED", false},
      {"ProSelectionAlloc", 3, L"Sketch Commit: model selection FAILED", false},
      {"ProElempathAlloc", 1, L"Sketch Commit: ProElemtreeElementGet PRO_E_SKETCHER status=-10", true},
      {"ProElemtreeElementGet", 1, L"Sketch Commit: ProElemtreeElementGet PRO_E_SKETCHER status=-10", true},
      {"ProElementSpecialvalueGet", 1, L"Sketch Commit: ProElementSpecialvalueGet status=-10", true},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.call);
    SCOPED_TRACE(each.occurrence);
    ClearCapturedLog();
    ASSERT_EQ(Session(L"S").plane_item.type, PRO_SURFACE);
    faults().Fail(each.call, -10, each.occurrence);
    EXPECT_TRUE(DrawPoint(L"S").success);
    EXPECT_EQ(CountCaptured(each.line), 1);
    EXPECT_EQ(CountCaptured(kRetry), 1);
    EXPECT_EQ(CountCaptured(L"Sketch Commit: using PRO_DATUM_PLANE refs for plane/orient"), 1);
    EXPECT_EQ(CountCaptured(kCleaning), each.had_incomplete_feature ? 1 : 0);
    EXPECT_EQ(CountCaptured(L"Sketch Commit: missing PRO_E_SKETCHER after incomplete create"),
              each.had_incomplete_feature ? 1 : 0);
    EXPECT_EQ(Session(L"S").plane_item.type, PRO_DATUM_PLANE);
    EXPECT_EQ(Session(L"S").orient_item.type, PRO_DATUM_PLANE);
    EXPECT_EQ(Current().features.size(), features_before_);

    // The next commit starts from surfaces again.
    ClearCapturedLog();
    EXPECT_TRUE(DrawPoint(L"S").success);
    EXPECT_EQ(CountCaptured(L"Sketch Commit: using PRO_SURFACE refs for plane/orient"), 1);
    EXPECT_EQ(CountCaptured(kRetry), 0);
  }
}

TEST_F(SketchCommit, AMissingSketcherLogsWhatStandsInTheSection) {
  faults().Fail("ProElementSpecialvalueGet", -4);
  EXPECT_TRUE(DrawPoint(L"S").success);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: STD_SECTION childCount=2"), 1);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: STD_SECTION child[0] elemId=450"), 1);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: STD_SECTION child[1] elemId=458"), 1);

  faults().Fail("ProElementSpecialvalueGet", -4);
  faults().Fail("ProElementChildrenGet", -2);
  EXPECT_TRUE(DrawPoint(L"S").success);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: STD_SECTION children get status=-2"), 1);
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

TEST_F(SketchCommit, TheLastWordStandsWhicheverSoftFailureItWas) {
  faults().Fail("ProMdlToModelitem", -1, 1, 2);
  EXPECT_EQ(DrawPoint(L"S").message,
            L"Sketch feature created but Creo did not provide a PRO_E_SKETCHER section.");
  ExpectUncommitted(2);
}

TEST_F(SketchCommit, NoSecondAttemptWithoutReferencesOfTheOtherForm) {
  faults().Fail("ProSelectionAlloc", -1);
  faults().Fail("ProModelitemByNameInit", -4);
  EXPECT_EQ(DrawPoint(L"S").message, L"Failed to commit sketch feature.");
  EXPECT_EQ(CountCaptured(kRetry), 1);
  EXPECT_EQ(
      CountCaptured(L"Sketch Commit END name='S' success=false hasFeature=0 message=Failed to commit sketch "
                    L"feature."),
      1);
  ExpectUncommitted(2);
}

TEST_F(SketchCommit, DatumReferencesAreFollowedBySurfaces) {
  Session(L"S").plane_item.type = PRO_DATUM_PLANE;
  // The plane has no surface to be found at first, so the datum form stays for the first attempt.
  faults().Fail("ProFeatureGeomitemVisit", -4);
  faults().Fail("ProMdlToModelitem", -1);
  EXPECT_TRUE(DrawPoint(L"S").success);
  EXPECT_EQ(CountCaptured(kRetry), 1);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: using PRO_DATUM_PLANE refs for plane/orient"), 0);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: using PRO_SURFACE refs for plane/orient"), 1);
  EXPECT_EQ(Session(L"S").plane_item.type, PRO_SURFACE);
}

struct HardFailure {
  const char* call;
  int occurrence;
  const wchar_t* message;
  const wchar_t* line;
  bool had_incomplete_feature;
};

// The drawing itself adds one entity, so the first to be copied is the second to be added.
TEST_F(SketchCommit, HardFailuresEndAtOnce) {
  const wchar_t* const tree = L"Failed to set sketch plane references.";
  const wchar_t* const create = L"Creo could not create the sketch feature.";
  const wchar_t* const extract = L"Sketch feature created but could not extract its element tree.";
  const wchar_t* const copy = L"Failed to copy sketch entities into Creo's section.";
  const wchar_t* const redefine = L"Sketch feature created but Creo could not complete it (redefine failed).";
  const HardFailure cases[] = {
      {"ProElementAlloc", 1, tree, L"Sketch Commit: BuildSketchElementTree FAILED", false},
      {"ProElementIntegerSet", 4, tree, L"Sketch Commit: BuildSketchElementTree FAILED", false},
      {"ProSelectionToReference", 2, tree, L"Sketch Commit: BuildSketchElementTree FAILED", false},
      {"ProElementReferenceSet", 1, tree, L"Sketch Commit: BuildSketchElementTree FAILED", false},
      {"ProElemtreeElementAdd", 9, tree, L"Sketch AddRefToParent: id=455 ElementAdd status=-10", false},
      {"ProArrayAlloc", 1, create, nullptr, false},
      {"ProFeatureWithoptionsCreate", 1, create, L"Sketch Commit: create status=-10 errCount=0 featId=0",
       false},
      {"ProFeatureElemtreeExtract", 1, extract, L"Sketch Commit: extract status=-10", true},
      {"ProSectionEntityGet", 1, copy, L"Sketch Transfer: EntityGet failed id=1", true},
      {"ProSectionEntityAdd", 2, copy, L"Sketch Transfer: EntityAdd failed", true},
      {"ProFeatureWithoptionsRedefine", 1, redefine, L"Sketch Commit: redefine status=-10 errCount=0", true},
  };
  std::size_t entities = 1;
  for (const auto& each : cases) {
    SCOPED_TRACE(each.call);
    SCOPED_TRACE(each.occurrence);
    ClearCapturedLog();
    const auto history = UndoStack().size();
    faults().Fail(each.call, -10, each.occurrence);
    const auto result = DrawPoint(L"S");
    EXPECT_FALSE(result.success);
    EXPECT_EQ(EncodeUtf8(result.message), EncodeUtf8(each.message));
    EXPECT_EQ(result.dataJson, L"null");
    if (each.line != nullptr) {
      EXPECT_EQ(CountCaptured(each.line), 1) << EncodeUtf8(each.line);
    }
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

// What comes back empty under a good status counts as missing.
TEST_F(SketchCommit, SuccessWithoutAResultIsAFailure) {
  faults().NoEffect("ProSelectionAlloc", 1);
  EXPECT_EQ(DrawPoint(L"S").message, L"Failed to set sketch plane references.");
  faults().NoEffect("ProSelectionAlloc", 2);
  EXPECT_EQ(DrawPoint(L"S").message, L"Failed to set sketch plane references.");
  EXPECT_EQ(CountCaptured(L"Sketch Commit: orient selection is required"), 1);
  faults().NoEffect("ProFeatureElemtreeExtract");
  EXPECT_EQ(DrawPoint(L"S").message, L"Sketch feature created but could not extract its element tree.");
  EXPECT_EQ(CountCaptured(L"Sketch Commit: extract status=0"), 1);
  faults().NoEffect("ProSectionEntityGet");
  EXPECT_EQ(DrawPoint(L"S").message, L"Failed to copy sketch entities into Creo's section.");
  EXPECT_EQ(CountCaptured(kRetry), 0);
  ExpectUncommitted(5);

  faults().NoEffect("ProElementSpecialvalueGet");
  EXPECT_TRUE(DrawPoint(L"S").success);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: ProElementSpecialvalueGet status=0"), 1);
  EXPECT_EQ(CountCaptured(kRetry), 1);
}

TEST_F(SketchCommit, ASectionThatDoesNotRegenerateIsLeftToTheRedefinition) {
  faults().Fail("ProSectionRegenerate", -1);
  EXPECT_TRUE(DrawPoint(L"S").success);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: ProSectionRegenerate status=-1"), 1);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: section error count=0"), 1);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: regenerate non-zero; continuing to redefine"), 1);

  // Without a list of errors there is nothing to count.
  ClearCapturedLog();
  faults().Fail("ProSecerrorAlloc", -1);
  faults().Fail("ProSectionRegenerate", -1);
  EXPECT_TRUE(DrawPoint(L"S").success);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: section error count=0"), 0);
}

TEST_F(SketchCommit, AnEntityThatCreoRefusesStaysAndIsTriedAgain) {
  const std::wstring refused = L"Sketch feature created but Creo could not complete it (redefine failed).";
  const auto line = Run(L"api_sketch_line_two_points", LR"({"sketch_name":"S","x1":1,"y1":1,"x2":1,"y2":1})");
  EXPECT_EQ(line.message, refused);
  EXPECT_EQ(CountCaptured(L"Sketch Commit: section error count=1"), 1);
  ExpectUncommitted(2);
  EXPECT_EQ(DrawPoint(L"S").message, refused);
  ExpectUncommitted(3);
}

TEST_F(SketchCommit, TheFreesComeInOrderAlsoAfterAFailure) {
  const std::vector<std::string> watched = {"ProFeatureDelete", "ProWindowRepaint",       "ProArrayFree",
                                            "ProElementFree",   "ProFeatureElemtreeFree", "ProSelectionFree",
                                            "ProReferenceFree"};
  // The extracted tree of a feature that is gone is freed as an element, before the tree that was built.
  faults().Fail("ProFeatureWithoptionsRedefine", -1);
  auto mark = host().journal.Mark();
  EXPECT_FALSE(DrawPoint(L"S").success);
  EXPECT_EQ(CallsSince(mark, watched),
            (std::vector<std::string>{"ProFeatureDelete", "ProWindowRepaint",  // the last commit's
                                      "ProFeatureDelete", "ProWindowRepaint",  // the incomplete one
                                      "ProArrayFree", "ProElementFree", "ProElementFree", "ProSelectionFree",
                                      "ProSelectionFree", "ProSelectionFree", "ProReferenceFree",
                                      "ProReferenceFree"}));
  // One that could not be deleted still owns its tree.
  faults().Fail("ProFeatureWithoptionsRedefine", -1);
  faults().Fail("ProFeatureDelete", -1);
  mark = host().journal.Mark();
  EXPECT_FALSE(DrawPoint(L"S").success);
  EXPECT_EQ(CallsSince(mark, {"ProFeatureDelete", "ProElementFree", "ProFeatureElemtreeFree"}),
            (std::vector<std::string>{"ProFeatureDelete", "ProFeatureElemtreeFree", "ProElementFree"}));
}

TEST_F(SketchCommit, CommitLogsItsWay) {
  EXPECT_TRUE(DrawPoint(L"S").success);
  const auto lines = LogLines();
  // Items and pointers differ from run to run; only the heads of their lines are looked at.
  const wchar_t* const heads[] = {
      L"MCP Dispatch BEGIN",
      L"Sketch Commit BEGIN name='S' entities=2 hasSection=1 hasFeature=1 plane='FRONT'",
      L"Sketch Commit planeItem: type=5 id=",
      L"Sketch Commit orientItem: type=5 id=",
      L"Sketch Discard: deleting feature id=",
      L"Sketch Commit: building incomplete tree (plane only, no sketcher)",
      L"Sketch AddRefToParent: id=451 ToReference status=0 ref=",
      L"Sketch AddRefToParent: id=451 ElementAdd status=0",
      L"Sketch AddRefToParent: id=455 ToReference status=0 ref=",
      L"Sketch AddRefToParent: id=455 ElementAdd status=0",
      L"Sketch Commit: ProFeatureWithoptionsCreate INCOMPLETE_FEAT",
      L"Sketch Commit: create status=0 errCount=0 featId=",
      L"Sketch Commit: ProFeatureElemtreeExtract",
      L"Sketch Commit: got Creo-provided PRO_E_SKETCHER section",
      L"Sketch Commit: copying session entities into Creo section",
      L"Sketch Commit: ProSectionRegenerate status=0",
      L"Sketch Commit: ProFeatureWithoptionsRedefine NO_OPTS",
      L"Sketch Commit: redefine status=0 errCount=0",
      L"Sketch Commit: rename feature id=",
      L"Sketch Commit END name='S' success=true hasFeature=1 message=Sketch committed.",
      L"MCP Dispatch END",
  };
  ASSERT_EQ(lines.size(), std::size(heads));
  for (std::size_t i = 0; i < lines.size(); ++i)
    EXPECT_TRUE(lines[i].starts_with(heads[i])) << EncodeUtf8(lines[i]) << " for " << EncodeUtf8(heads[i]);
}

// A session in a state that no operation brings about is refused before anything is deleted.
TEST_F(SketchCommit, ASessionWithoutSectionOrOrientationIsRefused) {
  const auto mark = host().journal.Mark();
  Session(L"S").has_section = false;
  EXPECT_EQ(sketch::CommitSketch(Session(L"S")).message, L"Sketch session has no section.");
  Session(L"S").has_section = true;
  Session(L"S").has_orient = false;
  EXPECT_EQ(sketch::CommitSketch(Session(L"S")).message, L"Sketch orientation reference is required.");
  EXPECT_TRUE(CallsSince(mark).empty());
}

TEST_F(SketchCommit, ReferencesOfNoKnownFormAreLookedUpAgain) {
  Session(L"S").plane_item.type = static_cast<ProType>(99);
  EXPECT_TRUE(sketch::CommitSketch(Session(L"S")).success);
  EXPECT_EQ(Session(L"S").plane_item.type, PRO_SURFACE);

  Session(L"S").plane_item.type = static_cast<ProType>(99);
  ClearCapturedLog();
  faults().Fail("ProModelitemByNameInit", -4);
  EXPECT_TRUE(sketch::CommitSketch(Session(L"S")).success);
  EXPECT_EQ(Session(L"S").plane_item.type, PRO_DATUM_PLANE);

  Session(L"S").plane_item.type = static_cast<ProType>(99);
  ClearCapturedLog();
  faults().Fail("ProModelitemByNameInit", -4, 1, 2);
  EXPECT_EQ(sketch::CommitSketch(Session(L"S")).message,
            L"Failed to resolve sketch plane/orient references.");
  const auto lines = LogLines();
  EXPECT_TRUE(std::ranges::none_of(
      lines, [](const std::wstring& line) { return line.starts_with(L"Sketch Commit END"); }));
  ExpectUncommitted(1);
}

TEST_F(SketchCommit, AnEmptySessionHasNoFeature) {
  Session(L"S").entities.clear();
  auto discarded = sketch::CommitSketch(Session(L"S"));
  EXPECT_TRUE(discarded.success);
  EXPECT_EQ(discarded.message, L"Empty sketch discarded.");
  EXPECT_EQ(CountCaptured(L"Sketch Commit: empty session discarded (no feature)"), 1);
  ExpectUncommitted(0);

  EXPECT_TRUE(DrawPoint(L"S").success);
  Session(L"S").entities.clear();
  faults().Fail("ProFeatureDelete", -1);
  EXPECT_EQ(sketch::CommitSketch(Session(L"S")).message, L"Failed to discard empty sketch feature.");
  EXPECT_EQ(CountCaptured(L"Sketch Discard: ProFeatureDelete status=-1"), 1);
  EXPECT_FALSE(Session(L"S").has_feature);
}

TEST_F(SketchCommit, SixtyLinesOneByOne) {
  for (int i = 0; i < 60; ++i) {
    const auto label =
        Draw(L"api_sketch_line_two_points", L"S",
             L"\"x1\":" + std::to_wstring(i) + L",\"x2\":" + std::to_wstring(i) + L",\"y2\":5");
    ASSERT_EQ(label, L"L:" + std::to_wstring(i + 1));
  }
  EXPECT_EQ(Section(L"S").entities.size(), 61u);
  ExpectEnds(Entity(L"S", 61), PRO_2D_LINE, {59, 0}, {59, 5});
  EXPECT_EQ(Current().features.size(), features_before_);
}

}  // namespace
}  // namespace vek::support

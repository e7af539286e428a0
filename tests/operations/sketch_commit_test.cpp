// Sketches as they are created, listed and committed.
#include <tuple>

#include "addin/ops/common/history.h"
#include "tests/operations/sketch_fixture.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kCreateSketch = L"api_sketch_create";

class SketchCreate : public SketchTest {};

// FRONT looks along +Z, TOP along +Y, RIGHT along +X. Direction 4 lays RIGHT's normal (+X) along the
// section's x, and y follows as normal × x: Z × X = Y, Y × X = -Z. On RIGHT, direction 1 lays TOP's normal
// (+Y) along the section's y, and x follows as y × normal: Y × X = -Z.
TEST_F(SketchCreate, PlanesAndTheirOrientation) {
  const std::tuple<const wchar_t*, const wchar_t*, int, bench::Vector3, bench::Vector3> cases[] = {
      {L" xy ", L"FRONT", 4, {1, 0, 0}, {0, 1, 0}},
      {L"front", L"front", 4, {1, 0, 0}, {0, 1, 0}},
      {L"XZ", L"TOP", 4, {1, 0, 0}, {0, 0, -1}},
      {L"YZ", L"RIGHT", 1, {0, 0, -1}, {0, 1, 0}}};
  NewPart();
  int number = 0;
  for (const auto& [requested, plane, direction, x, y] : cases) {
    const std::wstring name = L"S" + std::to_wstring(++number);
    SCOPED_TRACE(number);
    ExpectAnswer(kCreateSketch, Format(LR"({"name":"%s","plane":"%s"})", name, requested),
                 Format(L"Sketch '%s' created on %s (seeded construction point at origin).", name, plane),
                 Format(LR"({"name":"%s","plane":"%s","committed":true,"seed":"P:1"})", name, plane));
    EXPECT_EQ(Session(name).orient_dir, direction);
    ASSERT_NE(FeatureNamed(name), nullptr);
    EXPECT_EQ(FeatureNamed(name)->plane.x, x);
    EXPECT_EQ(FeatureNamed(name)->plane.y, y);
  }
}

TEST_F(SketchCreate, GeneratedNamesPassOverWhatIsTakenAndEnterTheHistory) {
  NewPart();
  CreateSketch(L"SKETCH_1");
  NewPart();
  // The first name belongs to a sketch of another document, and a feature here has the second with no number
  // behind it that would have raised the count.
  FeatureNamed(L"PRT_CSYS_DEF")->name = L"SKETCH_2";
  sketch::SketchNameCounter = 0;
  EXPECT_EQ(Succeed(kCreateSketch, LR"({"plane":"XY"})").value("name", ""), "SKETCH_3");
  EXPECT_EQ(UndoStack().back().label, L"Create sketch SKETCH_3");
  EXPECT_EQ(UndoStack().back().arguments, LR"({"name":"SKETCH_3","plane":"XY"})");

  // Numbers go on behind the highest in the model.
  CreateSketch(L"sketch_7");
  sketch::SketchSessionTable().clear();
  EXPECT_EQ(Succeed(kCreateSketch, LR"({"name":"","plane":"XY"})").value("name", ""), "SKETCH_8");
}

TEST_F(SketchCreate, CreateRefusals) {
  NewPart();
  CreateSketch(L"Taken");
  ExpectFailure(kCreateSketch, LR"({"name":"Taken","plane":"XY"})", L"Sketch 'Taken' already exists.");
  ExpectFailure(kCreateSketch, LR"({"name":"front","plane":"XY"})",
                L"Feature name 'front' is already used in the model. Choose a different sketch name.");
  ExpectFailure(kCreateSketch, LR"({"name":"S","plane":"FRONT "})",
                L"Datum plane 'FRONT ' not found in the active part.");
  EXPECT_EQ(CountCaptured(L"Sketch FindDatumPlane: 'FRONT ' not found"), 1);
  EXPECT_EQ(sketch::FindSketchSession(L"S"), nullptr);
  // FRONT is there still, but a plane can't orient itself; DTM1 stands across it.
  FeatureNamed(L"RIGHT")->name = L"DTM1";
  FeatureNamed(L"TOP")->name = L"DTM2";
  ExpectFailure(kCreateSketch, LR"({"name":"S","plane":"XY"})",
                L"Could not resolve sketch orientation reference (need RIGHT/TOP/FRONT datums).");
  CreateSketch(L"OnDatum", L"DTM1");
  NewAssembly();
  ExpectFailure(kCreateSketch, LR"({"name":"S","plane":"XY"})", L"Sketches require an active part document.");
}

TEST_F(SketchCreate, ASketchBeginsWithItsSeed) {
  NewPart();
  const auto mark = host().journal.Mark();
  CreateSketch(L"Seeded");
  ASSERT_EQ(Section(L"Seeded").entities.size(), 1u);
  EXPECT_EQ(Entity(L"Seeded", 1).type, PRO_2D_POINT);
  EXPECT_TRUE(Entity(L"Seeded", 1).construction);
  EXPECT_EQ(FeatureNamed(L"Seeded")->type, 949);
  std::string modes;
  for (const auto& call : host().journal.Since(mark))
    if (call.name == "ProSectionIntentManagerModeSet") modes += call.arguments.back();
  // The private section keeps its mode; the feature's goes off for the copying, and on and off again behind
  // it.
  EXPECT_EQ(modes, "1010");
}

TEST_F(SketchCreate, ListCountsTheSketchesOfTheActivePart) {
  NewPart();
  CreateSketch(L"Elsewhere");
  NewPart();
  EXPECT_EQ(Run(L"api_sketch_list").dataJson, L"[]");
  CreateSketch(L"b", L"YZ");
  CreateSketch(L"A");
  Draw(L"api_sketch_rectangle_two_points", L"A", LR"("x2":4,"y2":3)");
  Draw(L"api_sketch_line_two_points", L"A", LR"("x2":1,"construction":true)");
  faults().Fail("ProFeatureWithoptionsCreate", -1);
  EXPECT_FALSE(DrawPoint(L"b").success);

  ExpectAnswer(
      L"api_sketch_list", L"{}", L"2 sketch(es) found.",
      LR"([{"name":"A","plane":"FRONT","lines":4,"circles":0,"arcs":1,"entities":6,"committed":true},)"
      LR"({"name":"b","plane":"RIGHT","lines":0,"circles":0,"arcs":0,"entities":2,"committed":false}])");
}

TEST_F(SketchCreate, DrawingNeedsASketchOfTheActivePart) {
  const std::wstring operation = L"api_sketch_point";
  NewPart();
  CreateSketch(L"S");
  ExpectFailure(operation, LR"({"sketch_name":"s","x":1,"y":1})",
                L"Sketch 's' not found. Create it first with api_sketch_create.");
  NewPart();
  ExpectFailure(operation, LR"({"sketch_name":"S","x":1,"y":1})",
                L"Sketch belongs to a different document than the active one.");
  ExpectFailure(kCreateSketch, LR"({"name":"S","plane":"XY"})", L"Sketch 'S' already exists.");
  EXPECT_EQ(Session(L"S").entities.size(), 1u);
}

const wchar_t* const kRetry = L"Sketch Commit: retry with alternate plane/orient ref type";
const wchar_t* const kCleaning = L"Sketch Commit: deleting incomplete feature after failure/retry";

class SketchCommit : public CommittedSketchTest {};

TEST_F(SketchCommit, SoftFailuresAreAnsweredWithTheOtherFormOfReferences) {
  const std::tuple<const char*, int, const wchar_t*, bool> cases[] = {
      {"ProSelectionAlloc", 1, L"Sketch Commit: plane ProSelectionAlloc FAILED", false},
      {"ProSelectionAlloc", 2, L"Sketch Commit: orient ProSelectionAlloc FAILED", false},
      {"ProElemtreeElementGet", 1, L"Sketch Commit: ProElemtreeElementGet PRO_E_SKETCHER status=-10", true},
      {"ProElementSpecialvalueGet", 1, L"Sketch Commit: ProElementSpecialvalueGet status=-10", true}};
  for (const auto& [call, occurrence, line, had_incomplete_feature] : cases) {
    SCOPED_TRACE(call);
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
  EXPECT_EQ(DrawPoint(L"S").message,
            L"Sketch feature created but Creo did not provide a PRO_E_SKETCHER section.");
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
  // And whether there was an incomplete feature to be deleted.
  const std::tuple<const char*, int, const wchar_t*, const wchar_t*, bool> cases[] = {
      {"ProElemtreeElementAdd", 9, L"Failed to set sketch plane references.",
       L"Sketch AddRefToParent: id=455 ElementAdd status=-10", false},
      {"ProFeatureWithoptionsCreate", 1, L"Creo could not create the sketch feature.",
       L"Sketch Commit: create status=-10 errCount=0 featId=0", false},
      {"ProFeatureElemtreeExtract", 1, L"Sketch feature created but could not extract its element tree.",
       L"Sketch Commit: extract status=-10", true},
      {"ProSectionEntityAdd", 2, L"Failed to copy sketch entities into Creo's section.",
       L"Sketch Transfer: EntityAdd failed", true},
      {"ProFeatureWithoptionsRedefine", 1,
       L"Sketch feature created but Creo could not complete it (redefine failed).",
       L"Sketch Commit: redefine status=-10 errCount=0", true}};
  std::size_t entities = 1;
  for (const auto& [call, occurrence, message, line, had_incomplete_feature] : cases) {
    SCOPED_TRACE(call);
    ClearCapturedLog();
    const auto history = UndoStack().size();
    faults().Fail(call, -10, occurrence);
    EXPECT_EQ(DrawPoint(L"S").message, message);
    EXPECT_EQ(CountCaptured(line), 1);
    EXPECT_EQ(CountCaptured(kRetry), 0);
    EXPECT_EQ(CountCaptured(kCleaning), had_incomplete_feature ? 1 : 0);
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
            Format(L"Cannot rename sketch feature to 'S': that name is already used by an existing feature "
                   L"(id=%d). Choose a different sketch name.",
                   other.id));
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
      Format(L"Cannot rename sketch feature to 'S': that name is already used by another sketch in this "
             L"session (feature id=%d).",
             id));
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

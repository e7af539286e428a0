#include <gtest/gtest.h>

#include <tuple>

#include "addin/ops/common/history.h"
#include "tests/operations/sketch_fixture.h"
#include "tests/support/captured_log.h"

namespace vek::support {
namespace {

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
    const auto result =
        Run(L"api_sketch_create", L"{\"name\":\"" + name + L"\",\"plane\":\"" + requested + L"\"}");
    EXPECT_EQ(result.message,
              L"Sketch '" + name + L"' created on " + plane + L" (seeded construction point at origin).");
    EXPECT_EQ(result.dataJson, L"{\"name\":\"" + name + L"\",\"plane\":\"" + plane +
                                   L"\",\"committed\":true,\"seed\":\"P:1\"}");
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
  EXPECT_EQ(Succeed(L"api_sketch_create", LR"({"plane":"XY"})").value("name", ""), "SKETCH_3");
  EXPECT_EQ(UndoStack().back().label, L"Create sketch SKETCH_3");
  EXPECT_EQ(UndoStack().back().operation, L"api_sketch_create");
  EXPECT_EQ(UndoStack().back().arguments, LR"({"name":"SKETCH_3","plane":"XY"})");

  // Numbers go on behind the highest in the model, even the highest of all.
  CreateSketch(L"sketch_7");
  sketch::SketchSessionTable().clear();
  EXPECT_EQ(Succeed(L"api_sketch_create", LR"({"name":"","plane":"XY"})").value("name", ""), "SKETCH_8");
  FeatureNamed(L"SKETCH_2")->name = L"SKETCH_2147483647";
  EXPECT_EQ(Succeed(L"api_sketch_create", LR"({"plane":"XY"})").value("name", ""), "SKETCH_-2147483648");
}

TEST_F(SketchCreate, CreateRefusals) {
  ExpectFailure(L"api_sketch_create", LR"({"name":"S","plane":"XY"})", L"No active document.");
  EXPECT_EQ(CountCaptured(L"Sketch Create: no active part"), 1);
  NewPart();
  CreateSketch(L"Taken");
  ExpectFailure(L"api_sketch_create", LR"({"name":"Taken","plane":"XY"})", L"Sketch 'Taken' already exists.");
  ExpectFailure(L"api_sketch_create", LR"({"name":"front","plane":"XY"})",
                L"Feature name 'front' is already used in the model. Choose a different sketch name.");
  ExpectFailure(
      L"api_sketch_create", LR"({"name":"S"})",
      L"'plane' is required (XY, XZ, YZ, or a datum plane name). Face selectors are not yet supported.");
  ExpectFailure(L"api_sketch_create", LR"({"name":"S","plane":"FRONT "})",
                L"Datum plane 'FRONT ' not found in the active part.");
  EXPECT_EQ(CountCaptured(L"Sketch FindDatumPlane: 'FRONT ' not found"), 1);
  EXPECT_EQ(sketch::FindSketchSession(L"S"), nullptr);
  // FRONT is there still, but a plane can't orient itself; DTM1 stands across it.
  FeatureNamed(L"RIGHT")->name = L"DTM1";
  FeatureNamed(L"TOP")->name = L"DTM2";
  ExpectFailure(L"api_sketch_create", LR"({"name":"S","plane":"XY"})",
                L"Could not resolve sketch orientation reference (need RIGHT/TOP/FRONT datums).");
  CreateSketch(L"OnDatum", L"DTM1");
  NewAssembly();
  ExpectFailure(L"api_sketch_create", LR"({"name":"S","plane":"XY"})",
                L"Sketches require an active part document.");
  faults().Fail("ProMdlTypeGet", -1);
  ExpectFailure(L"api_sketch_create", LR"({"name":"S","plane":"XY"})",
                L"Failed to read active document type.");
}

TEST_F(SketchCreate, CreateFailuresOfTheHost) {
  NewPart();
  const std::pair<const char*, const wchar_t*> cases[] = {
      {"ProSection2DAlloc", L"Failed to allocate sketch section."},
      {"ProSectionEntityAdd", L"Failed to seed sketch geometry."},
      {"ProFeatureWithoptionsCreate", L"Creo could not create the sketch feature."}};
  for (const auto& [call, message] : cases) {
    faults().Fail(call, -1);
    ExpectFailure(L"api_sketch_create", LR"({"name":"S","plane":"XY"})", message);
  }
  EXPECT_TRUE(UndoStack().empty());
  CreateSketch(L"S");  // the name is free again
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

TEST_F(SketchCreate, ANameBeyondTheHostsBufferIsCutThere) {
  NewPart();
  const std::wstring name(40, L'N');
  CreateSketch(name);
  EXPECT_NE(FeatureNamed(std::wstring(31, L'N')), nullptr);
  EXPECT_TRUE(DrawPoint(name).success);
}

TEST_F(SketchCreate, ListCountsTheSketchesOfTheActivePart) {
  ExpectFailure(L"api_sketch_list", L"{}", L"No active document.");
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

  const auto listed = Run(L"api_sketch_list");
  EXPECT_EQ(listed.message, L"2 sketch(es) found.");
  EXPECT_EQ(
      listed.dataJson,
      LR"([{"name":"A","plane":"FRONT","lines":4,"circles":0,"arcs":1,"entities":6,"committed":true},)"
      LR"({"name":"b","plane":"RIGHT","lines":0,"circles":0,"arcs":0,"entities":2,"committed":false}])");
}

TEST_F(SketchCreate, DrawingNeedsASketchOfTheActivePart) {
  const std::wstring operation = L"api_sketch_point";
  ExpectFailure(operation, LR"({"sketch_name":"S","x":1,"y":1})", L"No active document.");
  NewPart();
  CreateSketch(L"S");
  ExpectFailure(operation, LR"({"x":1,"y":1})", L"'sketch_name' is required.");
  ExpectFailure(operation, LR"({"sketch_name":"s","x":1,"y":1})",
                L"Sketch 's' not found. Create it first with api_sketch_create.");
  NewPart();
  ExpectFailure(operation, LR"({"sketch_name":"S","x":1,"y":1})",
                L"Sketch belongs to a different document than the active one.");
  ExpectFailure(L"api_sketch_create", LR"({"name":"S","plane":"XY"})", L"Sketch 'S' already exists.");
  EXPECT_EQ(Session(L"S").entities.size(), 1u);
}

}  // namespace
}  // namespace vek::support

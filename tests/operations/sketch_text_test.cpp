#include <tuple>

#include "addin/ops/common/history.h"
#include "addin/ops/sketch/point_array.h"
#include "addin/ops/sketch/removal.h"
#include "tests/operations/sketch_fixture.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kText = L"api_sketch_text";
constexpr const wchar_t* kNative = L"api_sketch_text_native";
constexpr const wchar_t* kDelete = L"api_sketch_entity_delete";

class SketchTexts : public CommittedSketchTest {};

TEST(ContourArray, KeepsWhatCanBeRead) {
  const std::tuple<const wchar_t*, std::vector<std::size_t>> cases[] = {
      {L"[[[1,2]],[],[[1],[2]],[[0,0],[5,5]]]", {2}}, {L"[[0,0],[1,1]]", {}}, {L"", {}}};
  for (const auto& [text, sizes] : cases) {
    std::vector<std::vector<sketch::PlanePoint>> contours{{{9, 9}}};
    EXPECT_EQ(sketch::ParseContourArray(text, contours), !sizes.empty()) << EncodeUtf8(text);
    std::vector<std::size_t> found;
    for (const auto& contour : contours) found.push_back(contour.size());
    EXPECT_EQ(found, sizes) << EncodeUtf8(text);
  }
}

TEST_F(SketchTexts, OutlinesBecomeClosedLines) {
  // A triangle to be closed, a stroke, a triangle that closes itself within 1e-9, a point.
  const std::wstring outlines =
      LR"("text":"Hi","outlines":[[[0,0],[10,0],[0,10]],[[20,0],[20,5]],)"
      LR"([[30,0],[35,0],[35,5],[30,0.0000000005]],[[1,1]]])";
  ClearHistory();
  ExpectAnswer(kText, InSketch(outlines), L"Text 'Hi' added to 'S': 3 contour(s), 7 line segment(s).",
               LR"({"sketch_name":"S","entity":"L:1;L:2;L:3;L:4;L:5;L:6;L:7"})");
  ExpectEnds(Entity(L"S", 2), PRO_2D_LINE, {0, 0}, {10, 0});
  ExpectEnds(Entity(L"S", 4), PRO_2D_LINE, {0, 10}, {0, 0});
  ExpectEnds(Entity(L"S", 5), PRO_2D_LINE, {20, 0}, {20, 5});
  ExpectEnds(Entity(L"S", 8), PRO_2D_LINE, {35, 5}, {30, 5e-10});
  ASSERT_EQ(UndoStack().size(), 1u);
  EXPECT_EQ(UndoStack().back().entity, L"L:1;L:2;L:3;L:4;L:5;L:6;L:7");
  Succeed(L"api_document_undo");
  EXPECT_EQ(Section(L"S").entities.size(), 1u);
}

TEST_F(SketchTexts, WhatCantBeDrawnIsToldAndDrawsNothingMore) {
  const wchar_t* const outlines = L"'outlines' (array of contour arrays of [x, y] points) is required.";
  ExpectFailure(kText, InSketch(LR"("outlines":[[[1,1]],[[2,2]]])"), outlines);
  ExpectFailure(kNative, InSketch(LR"("text":"A","fontsize":nan,"cx":0,"cy":0)"),
                L"'fontsize' is required and must be positive.");
  ExpectFailure(kNative, InSketch(LR"("text":"  ","fontsize":5,"cx":0,"cy":0)"),
                L"Failed to add native text to section.");
  EXPECT_EQ(Session(L"S").entities.size(), 1u);
  faults().Fail("ProSectionEntityAdd", -1, 3);
  ClearHistory();
  ExpectFailure(kText, InSketch(LR"("outlines":[[[0,0],[10,0],[0,10]]])"),
                L"Failed to close text outline contour.");
  EXPECT_EQ(Session(L"S").entities.size(), 1u + 2u);
  EXPECT_TRUE(UndoStack().empty());
  EXPECT_TRUE(Session(L"S").has_feature);
}

// Two characters of 10 mm: 12 wide, 10 high.
TEST_F(SketchTexts, NativeTextIsAlignedByItsBox) {
  const std::tuple<const wchar_t*, bench::Point2> cases[] = {
      {LR"("cx":0,"cy":0)", {-6, -5}},
      {LR"("cx":0,"cy":0,"halign":"","valign":"middle")", {-6, -5}},
      {LR"("cx":1,"cy":2,"halign":"left","valign":"bottom")", {1, 2}},
      {LR"("cx":1,"cy":2,"halign":"RIGHT","valign":"Top")", {1 - 12, 2 - 10}}};
  int id = 1;
  for (const auto& [where, low] : cases) {
    SCOPED_TRACE(EncodeUtf8(where));
    EXPECT_EQ(Draw(kNative, L"S", std::wstring(LR"("text":"AB","fontsize":10,)") + where),
              Format(L"T:%d", id));
    const auto& text = Entity(L"S", ++id);
    ExpectEnds(text, PRO_2D_TEXT, low, {low[0] + 12, low[1] + 10});
    EXPECT_EQ(text.text, L"AB");
    EXPECT_EQ(text.font, L"");
  }
}

TEST_F(SketchTexts, NativeTextTellsWhatItMadeAndIgnoresAnAngle) {
  const std::tuple<const wchar_t*, const wchar_t*> cases[] = {
      {LR"("cx":1.5,"cy":-2,"angle_deg":0.0000000001)",
       L"Native text 'AB' added to 'S' at (1.5, -2) mm, size=10 mm."},
      {LR"("cx":0,"cy":20,"angle_deg":30,"font":"DejaVu Serif")",
       L"Native text 'AB' added to 'S' at (0, 20) mm, size=10 mm (angle_deg ignored: not supported by this "
       L"Creo SDK)."}};
  for (const auto& [more, message] : cases)
    EXPECT_EQ(Run(kNative, InSketch(std::wstring(LR"("text":"AB","fontsize":10,)") + more)).message, message);
  ExpectEnds(Entity(L"S", 3), PRO_2D_TEXT, {-6, 15}, {6, 25});
  EXPECT_EQ(Entity(L"S", 3).font, L"DejaVu Serif");
  // Outlines inside each other extrude to what lies between them.
  Succeed(L"api_sketch_create", LR"({"name":"O","plane":"XY"})");
  Draw(kText, L"O", LR"("outlines":[[[0,0],[20,0],[20,10],[0,10]],[[5,2],[15,2],[15,8],[5,8]]])");
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"O","distance_mm":3})");
  EXPECT_NEAR(Volume(), (20 * 10 - 10 * 6) * 3, 1e-6);
}

TEST_F(SketchTexts, LongTextsAreCutButTakeTheirWholeWidth) {
  Draw(kNative, L"S",
       LR"("text":")" + std::wstring(300, L'I') +
           LR"(","fontsize":1,"cx":0,"cy":0,"halign":"left","valign":"bottom")");
  EXPECT_EQ(Entity(L"S", 2).text, std::wstring(255, L'I'));
  ExpectPoint(Entity(L"S", 2).second, 300 * 0.6, 1);
}

TEST_F(SketchTexts, InAPartInInchesBoxAndOutlinesAreScaled) {
  Current().length_unit = bench::LengthUnit::kInch;
  Draw(kNative, L"S", LR"("text":"AB","fontsize":25.4,"cx":0,"cy":0,"halign":"left","valign":"bottom")");
  ExpectEnds(Entity(L"S", 2), PRO_2D_TEXT, {0, 0}, {1.2, 1});
  Draw(kText, L"S", LR"("outlines":[[[0,0],[50.8,25.4]]])");
  ExpectEnds(Entity(L"S", 3), PRO_2D_LINE, {0, 0}, {2, 1});
}

TEST_F(SketchTexts, EntitiesAreDeletedByTheirLabels) {
  Draw(L"api_sketch_polyline", L"S", LR"("points":[[0,0],[1,0],[2,0],[3,0]])");
  Draw(L"api_sketch_circle_center_radius", L"S", LR"("radius":9)");
  const wchar_t* const form = L"'entity' must look like 'L:2', 'C:1', or 'A:3'.";
  const std::tuple<const wchar_t*, const wchar_t*> refusals[] = {
      {L"L12", form}, {L" L:1", form}, {L"L:0", L"Entity 'L:0' not found in sketch 'S'."}};
  for (const auto& [label, message] : refusals)
    ExpectFailure(kDelete, InSketch(Format(LR"("entity":"%s")", label)), message);
  EXPECT_EQ(Session(L"S").entities.size(), 1u + 3u + 1u);

  EXPECT_EQ(Run(kDelete, InSketch(LR"("entity":"c:1")")).message, L"Entity 'c:1' deleted from sketch 'S'.");
  EXPECT_EQ(Run(kDelete, InSketch(LR"("entity":"L:2:start")")).message,
            L"Entity 'L:2:start' deleted from sketch 'S'.");
  EXPECT_EQ(Run(kDelete, InSketch(LR"("entity":"L:2")")).dataJson, L"null") << "the third moved up";
  EXPECT_EQ(Section(L"S").entities.size(), 2u);
  ExpectEnds(Entity(L"S", 2), PRO_2D_LINE, {0, 0}, {1, 0});
}

TEST_F(SketchTexts, TheLastEntityTakesTheFeatureAlong) {
  faults().Fail("ProFeatureDelete", -1);  // what the commit then says doesn't matter
  EXPECT_EQ(Run(kDelete, InSketch(LR"("entity":"P:1")")).message,
            L"Entity 'P:1' deleted; empty sketch 'S' discarded.");
  const auto row = Succeed(L"api_sketch_list").at(0);
  EXPECT_FALSE(row.at("committed").get<bool>());
  EXPECT_EQ(row.at("entities"), 0);
  CreateSketch(L"T");
  EXPECT_EQ(Run(kDelete, LR"({"sketch_name":"T","entity":"P:1"})").message,
            L"Entity 'P:1' deleted; empty sketch 'T' discarded.");
  EXPECT_EQ(FeatureNamed(L"T"), nullptr);
  EXPECT_TRUE(DrawPoint(L"T").success);
  EXPECT_EQ(Section(L"T").entities.size(), 1u);
}

TEST_F(SketchTexts, DrawingStepsAndSketchesAreTakenBackAsAWhole) {
  Draw(L"api_sketch_rectangle_two_points", L"S", LR"("x2":4,"y2":2)");
  EXPECT_EQ(sketch::DeleteSketchEntities(L"S", L" ; ;").message, L"'entity' is required.");
  EXPECT_EQ(sketch::DeleteSketchEntities(L"S", L"L:2; L:3 ;;L:4").message, L"Deleted 3 entities from 'S'.");
  ExpectEnds(Entity(L"S", 2), PRO_2D_LINE, {0, 0}, {4, 0});
  EXPECT_EQ(sketch::DeleteSketchEntities(L"S", L"L:9;L:1").message, L"Entity 'L:9' not found in sketch 'S'.");
  EXPECT_EQ(Session(L"S").entities.size(), 1u) << "the last one went first";

  EXPECT_TRUE(DrawPoint(L"S").success);
  faults().Fail("ProFeatureDelete", -1);
  EXPECT_EQ(sketch::DeleteSketch(L"S").message, L"Failed to delete sketch feature.");
  EXPECT_NE(sketch::FindSketchSession(L"S"), nullptr);
  EXPECT_EQ(sketch::DeleteSketch(L"S").message, L"Sketch 'S' deleted.");
  EXPECT_EQ(sketch::FindSketchSession(L"S"), nullptr);
}

}  // namespace
}  // namespace vek::support

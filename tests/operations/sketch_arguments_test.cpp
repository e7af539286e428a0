#include <gtest/gtest.h>

#include <tuple>

#include "addin/ops/common/history.h"
#include "addin/ops/sketch/create.h"
#include "addin/ops/sketch/point_array.h"
#include "addin/text/utf8.h"
#include "tests/operations/sketch_fixture.h"

namespace vek::support {
namespace {

class SketchArguments : public CommittedSketchTest {};

TEST(PointArray, ReadsPairsAndObjectsAndRefusesWhatIsNeither) {
  using Pairs = std::vector<std::pair<double, double>>;
  const std::tuple<const char*, const wchar_t*, bool, Pairs> cases[] = {
      {"pairs", L"[[0,0],[10, -2.5]]", true, {{0, 0}, {10, -2.5}}},
      {"objects in any order of keys", L"[{\"y\":2,\"x\":1}]", true, {{1, 2}}},
      {"a third number is ignored", L"[[1,2,3]]", true, {{1, 2}}},
      {"quoted numbers in objects", L"[{\"x\":\"1\",\"y\":\"2\"}]", true, {{1, 2}}},
      {"no number is zero", L"[[a,2]]", true, {{0, 2}}},
      {"an object without y fails the whole", L"[[1,2],{\"x\":3}]", false, {{1, 2}}},
      {"one number fails the whole", L"[[1,2],[3]]", false, {{1, 2}}},
      {"no element", L"[]", false, {}},
      {"bare numbers are no elements", L"[1,2,3,4]", false, {}},
      {"an element that never closes is none", L"[[1,2],[3,4", true, {{1, 2}}},
      {"a stray closing bracket", L"]]}[[1,2]]", false, {}},
      {"brackets in strings count", L"[{\"note\":\"]\",\"x\":1,\"y\":2}]", false, {}},
  };
  for (const auto& [what, text, is_read, expected] : cases) {
    SCOPED_TRACE(what);
    std::vector<sketch::PlanePoint> points{{99, 99}};
    EXPECT_EQ(sketch::ParsePointArray(text, points), is_read);
    ASSERT_EQ(points.size(), expected.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
      EXPECT_EQ(points[i].x, expected[i].first);
      EXPECT_EQ(points[i].y, expected[i].second);
    }
  }
}

TEST(AddNameToArgs, PutsTheNameInFrontUnlessItIsThere) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {LR"(  {"plane":"XY"}  )", LR"({"name":"S","plane":"XY"})"},
      {LR"({"plane":"XY","name":"S"} )", LR"({"plane":"XY","name":"S"} )"},
      {LR"({"name":""})", LR"({"name":"S","name":""})"},
      {L"{}", LR"({"name":"S"})"},
      {L"  ", LR"({"name":"S"})"},
      {L" [1] ", L" [1] "},
  };
  for (const auto& [arguments, expected] : cases) EXPECT_EQ(sketch::AddNameToArgs(arguments, L"S"), expected);
  EXPECT_EQ(sketch::AddNameToArgs(L"{}", L"a\"b"), LR"({"name":"a\"b"})");
}

TEST_F(SketchArguments, ArgumentsAreCheckedBeforeAnythingIsDrawn) {
  const wchar_t* const radius = L"'radius' is required and must be positive.";
  const wchar_t* const radii = L"'radius_x' and 'radius_y' are required and must be positive.";
  const wchar_t* const sweep = L"'sweep_angle_deg' is required.";
  const wchar_t* const points = L"'points' must contain at least two [x, y] entries.";
  const wchar_t* const slot = L"'length_mm' and 'width_mm' are required.";
  const wchar_t* const slot_order = L"'length_mm' must be greater than 'width_mm'.";
  const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
      {L"api_sketch_point", LR"("x":1)", L"'x' and 'y' are required."},
      {L"api_sketch_circle_center_radius", LR"("cx":1)", radius},
      {L"api_sketch_circle_center_radius", LR"("radius":0)", radius},
      {L"api_sketch_circle_center_radius", LR"("radius":nan)", radius},
      {L"api_sketch_arc", LR"("sweep_angle_deg":90)", radius},
      {L"api_sketch_arc", LR"("radius":5)", sweep},
      {L"api_sketch_polyline", LR"("points":[[1,2]])", points},
      {L"api_sketch_polyline", LR"("points":[[1,2],[3]])", points},
      {L"api_sketch_spline", LR"("points":[[1,2],{"x":1}])", points},
      {L"api_sketch_ellipse_center_radii", LR"("radius_x":1,"radius_y":0)", radii},
      {L"api_sketch_ellipse_center_radii", LR"("radius_x":nan,"radius_y":1)", radii},
      {L"api_sketch_ellipse_arc", LR"("sweep_angle_deg":90)", radii},
      {L"api_sketch_ellipse_arc", LR"("radius_x":1,"radius_y":1)", sweep},
      {L"api_sketch_slot", LR"("length_mm":10)", slot},
      {L"api_sketch_slot", LR"("width_mm":10)", slot},
      {L"api_sketch_slot", LR"("length_mm":10,"width_mm":10)", slot_order},
      {L"api_sketch_slot", LR"("length_mm":nan,"width_mm":10)", slot_order},
  };
  ClearHistory();
  const auto mark = host().journal.Mark();
  for (const auto& [operation, arguments, message] : cases) {
    SCOPED_TRACE(EncodeUtf8(arguments));
    ExpectFailure(operation, std::wstring(L"{\"sketch_name\":\"S\",") + arguments + L"}", message);
  }
  EXPECT_TRUE(CallsSince(mark, {"ProSectionEntityAdd", "ProFeatureDelete"}).empty());
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(SketchArguments, EveryDrawingOperationNeedsItsSketch) {
  for (const wchar_t* operation :
       {L"api_sketch_point", L"api_sketch_line_two_points", L"api_sketch_circle_center_radius",
        L"api_sketch_rectangle_two_points", L"api_sketch_arc", L"api_sketch_polyline", L"api_sketch_spline",
        L"api_sketch_ellipse_center_radii", L"api_sketch_ellipse_arc", L"api_sketch_slot"})
    ExpectFailure(operation, L"{}", L"'sketch_name' is required.");
}

TEST_F(SketchArguments, AFailedAdditionLeavesTheEarlierOnesAndCommitsNothing) {
  const wchar_t* const slot = L"Failed to add slot geometry to section.";
  const std::tuple<const wchar_t*, const wchar_t*, int, const wchar_t*> cases[] = {
      {L"api_sketch_point", LR"("x":1,"y":1)", 1, L"Failed to add point to section."},
      {L"api_sketch_line_two_points", LR"("x2":1)", 1, L"Failed to add line to section."},
      {L"api_sketch_line_two_points", LR"("x2":1,"centerline":true)", 1,
       L"Failed to add centerline to section."},
      {L"api_sketch_circle_center_radius", LR"("radius":1)", 1, L"Failed to add circle to section."},
      {L"api_sketch_rectangle_two_points", LR"("x2":1,"y2":1)", 3,
       L"Failed to add rectangle edges to section."},
      {L"api_sketch_arc", LR"("radius":1,"sweep_angle_deg":9)", 1, L"Failed to add arc to section."},
      {L"api_sketch_polyline", LR"("points":[[0,0],[1,0],[1,1]],"closed":true)", 2,
       L"Failed to add polyline segment to section."},
      {L"api_sketch_polyline", LR"("points":[[0,0],[1,0],[1,1]],"closed":true)", 3,
       L"Failed to close polyline."},
      {L"api_sketch_spline", LR"("points":[[0,0],[1,0]])", 1, L"Failed to add spline to section."},
      {L"api_sketch_ellipse_center_radii", LR"("radius_x":1,"radius_y":2)", 1,
       L"Failed to add ellipse to section."},
      {L"api_sketch_ellipse_center_radii", LR"("radius_x":1,"radius_y":2,"rotation_deg":0.00000001)", 1,
       L"Failed to add rotated ellipse approximation to section."},
      {L"api_sketch_ellipse_arc", LR"("radius_x":1,"radius_y":2,"sweep_angle_deg":9)", 1,
       L"Failed to add elliptical arc approximation to section."},
      {L"api_sketch_slot", LR"("length_mm":3,"width_mm":1)", 1, slot},
      {L"api_sketch_slot", LR"("length_mm":3,"width_mm":1)", 4, slot},
  };
  ClearHistory();
  const auto mark = host().journal.Mark();
  std::size_t entities = 1;
  for (const auto& [operation, arguments, failing, message] : cases) {
    SCOPED_TRACE(EncodeUtf8(message));
    faults().Fail("ProSectionEntityAdd", -1, failing);
    ExpectFailure(operation, std::wstring(L"{\"sketch_name\":\"S\",") + arguments + L"}", message);
    entities += static_cast<std::size_t>(failing) - 1;
    EXPECT_EQ(Session(L"S").entities.size(), entities);
  }
  EXPECT_TRUE(CallsSince(mark, {"ProFeatureDelete", "ProFeatureWithoptionsCreate"}).empty());
  EXPECT_TRUE(UndoStack().empty());
  EXPECT_TRUE(Session(L"S").has_feature);
}

}  // namespace
}  // namespace vek::support

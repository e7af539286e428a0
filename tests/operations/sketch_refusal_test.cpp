#include <gtest/gtest.h>

#include "addin/ops/common/history.h"
#include "addin/text/utf8.h"
#include "tests/operations/sketch_fixture.h"

namespace vek::support {
namespace {

class SketchRefusal : public SketchTest {
 protected:
  void SetUp() override {
    SketchTest::SetUp();
    NewPart();
    CreateSketch(L"S");
    ClearHistory();
  }
};

struct ArgumentCase {
  const wchar_t* operation;
  const wchar_t* arguments;
  const wchar_t* message;
};

TEST_F(SketchRefusal, ArgumentsAreCheckedBeforeAnythingIsDrawn) {
  const wchar_t* const radius = L"'radius' is required and must be positive.";
  const wchar_t* const radii = L"'radius_x' and 'radius_y' are required and must be positive.";
  const wchar_t* const sweep = L"'sweep_angle_deg' is required.";
  const wchar_t* const points = L"'points' must contain at least two [x, y] entries.";
  const wchar_t* const slot = L"'length_mm' and 'width_mm' are required.";
  const wchar_t* const slot_order = L"'length_mm' must be greater than 'width_mm'.";
  const ArgumentCase cases[] = {
      {L"api_sketch_point", LR"("x":1)", L"'x' and 'y' are required."},
      {L"api_sketch_point", LR"("y":1)", L"'x' and 'y' are required."},
      {L"api_sketch_circle_center_radius", LR"("cx":1)", radius},
      {L"api_sketch_circle_center_radius", LR"("radius":0)", radius},
      {L"api_sketch_circle_center_radius", LR"("radius":-2)", radius},
      {L"api_sketch_circle_center_radius", LR"("radius":nan)", radius},
      {L"api_sketch_arc", LR"("sweep_angle_deg":90)", radius},
      {L"api_sketch_arc", LR"("radius":0)", radius},
      {L"api_sketch_arc", LR"("radius":5)", sweep},
      {L"api_sketch_polyline", LR"("closed":true)", points},
      {L"api_sketch_polyline", LR"("points":[[1,2]])", points},
      {L"api_sketch_polyline", LR"("points":[[1,2],[3]])", points},
      {L"api_sketch_spline", LR"("points":[])", points},
      {L"api_sketch_spline", LR"("points":[[1,2],{"x":1}])", points},
      {L"api_sketch_ellipse_center_radii", LR"("radius_x":1)", radii},
      {L"api_sketch_ellipse_center_radii", LR"("radius_x":1,"radius_y":0)", radii},
      {L"api_sketch_ellipse_center_radii", LR"("radius_x":nan,"radius_y":1)", radii},
      {L"api_sketch_ellipse_arc", LR"("sweep_angle_deg":90)", radii},
      {L"api_sketch_ellipse_arc", LR"("radius_x":1,"radius_y":1)", sweep},
      {L"api_sketch_slot", LR"("length_mm":10)", slot},
      {L"api_sketch_slot", LR"("width_mm":10)", slot},
      {L"api_sketch_slot", LR"("length_mm":10,"width_mm":10)", slot_order},
      {L"api_sketch_slot", LR"("length_mm":nan,"width_mm":10)", slot_order},
  };
  const auto mark = host().journal.Mark();
  for (const auto& each : cases) {
    SCOPED_TRACE(EncodeUtf8(each.arguments));
    ExpectFailure(each.operation, std::wstring(L"{\"sketch_name\":\"S\",") + each.arguments + L"}",
                  each.message);
  }
  EXPECT_TRUE(CallsSince(mark, {"ProSectionEntityAdd", "ProFeatureDelete"}).empty());
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(SketchRefusal, EveryDrawingOperationNeedsItsSketch) {
  for (const wchar_t* operation :
       {L"api_sketch_point", L"api_sketch_line_two_points", L"api_sketch_circle_center_radius",
        L"api_sketch_rectangle_two_points", L"api_sketch_arc", L"api_sketch_polyline", L"api_sketch_spline",
        L"api_sketch_ellipse_center_radii", L"api_sketch_ellipse_arc", L"api_sketch_slot"})
    ExpectFailure(operation, L"{}", L"'sketch_name' is required.");
}

struct AddCase {
  const wchar_t* operation;
  const wchar_t* arguments;
  int failing;  // which addition fails
  const wchar_t* message;
};

TEST_F(SketchRefusal, AFailedAdditionLeavesTheEarlierOnesAndCommitsNothing) {
  const wchar_t* const slot = L"Failed to add slot geometry to section.";
  const AddCase cases[] = {
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
      {L"api_sketch_slot", LR"("length_mm":3,"width_mm":1)", 2, slot},
      {L"api_sketch_slot", LR"("length_mm":3,"width_mm":1)", 3, slot},
      {L"api_sketch_slot", LR"("length_mm":3,"width_mm":1)", 4, slot},
  };
  const auto mark = host().journal.Mark();
  std::size_t entities = 1;
  for (const auto& each : cases) {
    SCOPED_TRACE(EncodeUtf8(each.message));
    faults().Fail("ProSectionEntityAdd", -1, each.failing);
    ExpectFailure(each.operation, std::wstring(L"{\"sketch_name\":\"S\",") + each.arguments + L"}",
                  each.message);
    entities += static_cast<std::size_t>(each.failing) - 1;
    EXPECT_EQ(Session(L"S").entities.size(), entities);
  }
  EXPECT_TRUE(CallsSince(mark, {"ProFeatureDelete", "ProFeatureWithoptionsCreate"}).empty());
  EXPECT_TRUE(UndoStack().empty());
  EXPECT_TRUE(Session(L"S").has_feature);
}

TEST_F(SketchRefusal, ANegativeWidthPassesTheCheckAndIsLeftToTheHost) {
  // The lines can be drawn; an arc of negative radius can't.
  ExpectFailure(L"api_sketch_slot", LR"({"sketch_name":"S","length_mm":10,"width_mm":-2})",
                L"Failed to add slot geometry to section.");
  EXPECT_EQ(Session(L"S").entities.size(), 3u);
}

}  // namespace
}  // namespace vek::support

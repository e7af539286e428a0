#include <numbers>
#include <tuple>

#include "addin/ops/common/history.h"
#include "addin/ops/sketch/create.h"
#include "addin/ops/sketch/point_array.h"
#include "tests/operations/sketch_fixture.h"

namespace vek::support {
namespace {

constexpr double kPi = std::numbers::pi;

class SketchGeometry : public CommittedSketchTest {};

TEST_F(SketchGeometry, EachOperationTellsWhatItDrew) {
  const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
      {L"point", LR"("x":1.5,"y":-2)", L"P:2", L"Point (1.5, -2) mm added to 'S'."},
      {L"line_two_points", LR"("x2":10)", L"L:1", L"Line added to 'S' and sketch committed."},
      {L"line_two_points", LR"("x2":10,"centerline":true)", L"A:1",
       L"Centerline added to 'S' and sketch committed."},
      {L"line_two_points", LR"("y2":10,"construction":1)", L"A:2",
       L"Centerline added to 'S' and sketch committed."},
      {L"circle_center_radius", LR"("radius":0.25)", L"C:1", L"Circle (r=0.25 mm) added to 'S'."},
      {L"rectangle_two_points", LR"("x2":10,"y2":5)", L"L:2;L:3;L:4;L:5", L"Rectangle added to 'S'."},
      {L"arc", LR"("radius":5,"sweep_angle_deg":-90,"start_angle_deg":45)", L"A:3",
       L"Arc added to 'S' (start=45 deg, sweep=-90 deg)."},
      {L"polyline", LR"("points":[[0,0],[1,0],{"x":1,"y":1}],"closed":true)", L"L:6;L:7;L:8",
       L"Polyline (3 pts, closed) added to 'S'."},
      {L"polyline", LR"("points":[[0,0],[1,0],[2,3]])", L"L:9;L:10", L"Polyline (3 pts, open) added to 'S'."},
      {L"spline", LR"("points":[[0,0],[1,2],[2,0]])", L"S:1", L"Spline (3 pts) added to 'S'."},
      {L"ellipse_center_radii", LR"("radius_x":4,"radius_y":2)", L"E:1",
       L"Ellipse (rx=4, ry=2 mm) added to 'S'."},
      {L"ellipse_center_radii", LR"("radius_x":4,"radius_y":2,"rotation_deg":0.00000001)", L"E:2",
       L"Ellipse (rx=4, ry=2 mm) added to 'S'."},
      {L"ellipse_arc", LR"("radius_x":4,"radius_y":2,"sweep_angle_deg":120)", L"S:2",
       L"Elliptical arc (rx=4, ry=2 mm, sweep=120 deg) added to 'S'."},
      {L"slot", LR"("length_mm":30,"width_mm":10)", L"L:11;L:12;A:4;A:5",
       L"Slot (length=30, width=10 mm) added to 'S'."}};
  for (const auto& [shape, more, labels, message] : cases) {
    SCOPED_TRACE(EncodeUtf8(Format(L"%s %s", shape, more)));
    ClearHistory();
    const std::wstring operation = Format(L"api_sketch_%s", shape), arguments = InSketch(more);
    ExpectAnswer(operation, arguments, message, Format(LR"({"sketch_name":"S","entity":"%s"})", labels));
    ASSERT_EQ(UndoStack().size(), 1u);
    const HistoryEntry& step = UndoStack().back();
    EXPECT_EQ(step.label, Format(L"Draw %s in S", labels));
    EXPECT_EQ(step.operation, operation);
    EXPECT_EQ(step.arguments, arguments);
    EXPECT_EQ(step.entity, labels);
  }
}

TEST_F(SketchGeometry, OutlinesAreWalkedFromTheirFirstPointBackToIt) {
  Draw(L"api_sketch_rectangle_two_points", L"S", LR"("x1":4,"y1":3,"x2":-1,"y2":0)");
  ExpectEnds(Entity(L"S", 2), PRO_2D_LINE, {4, 3}, {-1, 3});
  ExpectEnds(Entity(L"S", 3), PRO_2D_LINE, {-1, 3}, {-1, 0});
  ExpectEnds(Entity(L"S", 4), PRO_2D_LINE, {-1, 0}, {4, 0});
  ExpectEnds(Entity(L"S", 5), PRO_2D_LINE, {4, 0}, {4, 3});
  Draw(L"api_sketch_polyline", L"S", LR"("points":[[0,10],[4,10],[4,13]],"closed":true)");
  ExpectEnds(Entity(L"S", 6), PRO_2D_LINE, {0, 10}, {4, 10});
  ExpectEnds(Entity(L"S", 7), PRO_2D_LINE, {4, 10}, {4, 13});
  ExpectEnds(Entity(L"S", 8), PRO_2D_LINE, {4, 13}, {0, 10});
}

TEST_F(SketchGeometry, ANegativeSweepDrawsTheSameArcFromItsOtherEnd) {
  Draw(L"api_sketch_arc", L"S", LR"("cx":1,"cy":2,"radius":5,"start_angle_deg":90,"sweep_angle_deg":-120)");
  // From 90 - 120 = -30 degrees to 90.
  ExpectArc(Entity(L"S", 2), {1, 2}, 5, -kPi / 6, kPi / 2);
  Draw(L"api_sketch_arc", L"S", LR"("radius":5,"start_angle_deg":300,"sweep_angle_deg":120)");
  ExpectArc(Entity(L"S", 3), {0, 0}, 5, kPi * 5 / 3, kPi * 7 / 3);
}

// Upright: half = (40 - 10) / 2 = 15 and r = 5, so the centers lie at (5, 7 ∓ 15), and the sides 5 to the
// left and to the right of them.
TEST_F(SketchGeometry, ASlotIsTwoLinesAndTwoHalfCircles) {
  Draw(L"api_sketch_slot", L"S", LR"("cx":5,"cy":7,"length_mm":40,"width_mm":10,"angle_deg":90)");
  ExpectEnds(Entity(L"S", 2), PRO_2D_LINE, {0, -8}, {0, 22});
  ExpectEnds(Entity(L"S", 3), PRO_2D_LINE, {10, 22}, {10, -8});
  ExpectArc(Entity(L"S", 4), {5, 22}, 5, 0, kPi);
  ExpectArc(Entity(L"S", 5), {5, -8}, 5, kPi, 2 * kPi);
}

TEST_F(SketchGeometry, AnEllipseIsTrueOnlyAlongTheAxes) {
  Draw(L"api_sketch_ellipse_center_radii", L"S",
       LR"("cx":1,"cy":2,"radius_x":4,"radius_y":3,"rotation_deg":0.0000000001)");
  const auto& straight = Entity(L"S", 2);
  EXPECT_EQ(straight.type, PRO_2D_ELLIPSE);
  ExpectPoint(straight.first, 1, 2);
  EXPECT_EQ(straight.radius, 4);
  EXPECT_EQ(straight.second_radius, 3);

  Draw(L"api_sketch_ellipse_center_radii", L"S",
       LR"("cx":1,"cy":2,"radius_x":20,"radius_y":10,"rotation_deg":90)");
  const auto& turned = Entity(L"S", 3);
  EXPECT_EQ(turned.type, PRO_2D_SPLINE);
  ASSERT_EQ(turned.points.size(), 33u);
  // (1 - 10 sin t, 2 + 20 cos t) at t = 0, an eighth, a quarter, a half, and the whole turn; √2/2 =
  // 0.70710678118...
  ExpectPoint(turned.points[0], 1, 22);
  ExpectPoint(turned.points[4], 1 - 7.0710678118654755, 2 + 14.142135623730951);
  ExpectPoint(turned.points[8], -9, 2);
  ExpectPoint(turned.points[16], 1, -18);
  ExpectPoint(turned.points[32], 1, 22);
}

TEST_F(SketchGeometry, AnEllipticalArcIsASplineAlsoAlongTheAxes) {
  Draw(L"api_sketch_ellipse_arc", L"S",
       LR"("radius_x":20,"radius_y":10,"start_angle_deg":90,"sweep_angle_deg":-60)");
  const auto& arc = Entity(L"S", 2);
  EXPECT_EQ(arc.type, PRO_2D_SPLINE);
  ASSERT_EQ(arc.points.size(), 33u);
  ExpectPoint(arc.points[0], 0, 10);
  // Half-way at 60 degrees, and the end at 30: √3/2 = 0.86602540378...
  ExpectPoint(arc.points[16], 10, 8.6602540378443865);
  ExpectPoint(arc.points[32], 17.320508075688773, 5);
}

TEST_F(SketchGeometry, ConstructionGeometryStaysSoInTheFeature) {
  Draw(L"api_sketch_circle_center_radius", L"S", LR"("radius":2,"construction":true)");
  Draw(L"api_sketch_circle_center_radius", L"S", LR"("radius":3)");
  Draw(L"api_sketch_line_two_points", L"S", LR"("x2":3,"construction":true)");
  Draw(L"api_sketch_point", L"S", LR"("x":3,"y":3,"construction":true)");
  EXPECT_TRUE(Entity(L"S", 2).construction);
  EXPECT_FALSE(Entity(L"S", 3).construction);
  // A line becomes a centerline instead, and a point takes no such flag.
  EXPECT_FALSE(Entity(L"S", 4).construction);
  ExpectEnds(Entity(L"S", 4), PRO_2D_CENTER_LINE, {0, 0}, {3, 0});
  EXPECT_FALSE(Entity(L"S", 5).construction);
}

TEST_F(SketchGeometry, LengthsAreScaledToTheUnitsOfTheModelAndAnglesAreNot) {
  Current().length_unit = bench::LengthUnit::kInch;
  Draw(L"api_sketch_circle_center_radius", L"S", LR"("cx":50.8,"cy":-25.4,"radius":25.4)");
  EXPECT_NEAR(Entity(L"S", 2).radius, 1, 1e-12);
  ExpectPoint(Entity(L"S", 2).first, 2, -1);
  Draw(L"api_sketch_arc", L"S", LR"("radius":12.7,"sweep_angle_deg":90)");
  ExpectArc(Entity(L"S", 3), {0, 0}, 0.5, 0, kPi / 2);
  Draw(L"api_sketch_spline", L"S", LR"("points":[[0,0],[25.4,50.8]])");
  ExpectPoint(Entity(L"S", 4).points[1], 1, 2);
  Draw(L"api_sketch_ellipse_center_radii", L"S", LR"("radius_x":50.8,"radius_y":25.4)");
  EXPECT_NEAR(Entity(L"S", 5).radius, 2, 1e-12);
  Draw(L"api_sketch_slot", L"S", LR"("length_mm":76.2,"width_mm":25.4)");
  // Three inches by one: half = 1, r = 0.5.
  ExpectEnds(Entity(L"S", 6), PRO_2D_LINE, {-1, 0.5}, {1, 0.5});
  EXPECT_EQ(Run(L"api_sketch_point", LR"({"sketch_name":"S","x":25.4,"y":0})").message,
            L"Point (25.4, 0) mm added to 'S'.");
}

TEST(PointArray, ReadsPairsAndObjectsAndRefusesWhatIsNeither) {
  using Pairs = std::vector<std::pair<double, double>>;
  const std::tuple<const wchar_t*, bool, Pairs> cases[] = {{LR"([{"x":"1","y":"2"}])", true, {{1, 2}}},
                                                           {L"[[a,2]]", true, {{0, 2}}},
                                                           {LR"([[1,2],{"x":3}])", false, {{1, 2}}},
                                                           {L"[[1,2],[3,4", true, {{1, 2}}},
                                                           {L"]]}[[1,2]]", false, {}},
                                                           {LR"([{"note":"]","x":1,"y":2}])", false, {}}};
  for (const auto& [text, is_read, expected] : cases) {
    std::vector<sketch::PlanePoint> points{{99, 99}};
    EXPECT_EQ(sketch::ParsePointArray(text, points), is_read) << EncodeUtf8(text);
    Pairs pairs;
    for (const auto& point : points) pairs.emplace_back(point.x, point.y);
    EXPECT_EQ(pairs, expected) << EncodeUtf8(text);
  }
}

TEST(AddNameToArgs, PutsTheNameInFrontUnlessItIsThere) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {LR"(  {"plane":"XY"}  )", LR"({"name":"S","plane":"XY"})"},
      {LR"({"plane":"XY","name":"S"} )", LR"({"plane":"XY","name":"S"} )"},
      {LR"({"name":""})", LR"({"name":"S","name":""})"},
      {L"  ", LR"({"name":"S"})"},
      {L" [1] ", L" [1] "}};
  for (const auto& [arguments, expected] : cases) EXPECT_EQ(sketch::AddNameToArgs(arguments, L"S"), expected);
  EXPECT_EQ(sketch::AddNameToArgs(L"{}", L"a\"b"), LR"({"name":"a\"b"})");
}

TEST_F(SketchGeometry, ArgumentsAreCheckedBeforeAnythingIsDrawn) {
  const wchar_t* const radius = L"'radius' is required and must be positive.";
  const wchar_t* const points = L"'points' must contain at least two [x, y] entries.";
  const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
      {L"api_sketch_circle_center_radius", LR"("radius":0)", radius},
      {L"api_sketch_circle_center_radius", LR"("radius":nan)", radius},
      {L"api_sketch_polyline", LR"("points":[[1,2]])", points},
      {L"api_sketch_spline", LR"("points":[[1,2],{"x":1}])", points},
      {L"api_sketch_ellipse_center_radii", LR"("radius_x":1,"radius_y":0)",
       L"'radius_x' and 'radius_y' are required and must be positive."},
      {L"api_sketch_slot", LR"("length_mm":10,"width_mm":10)",
       L"'length_mm' must be greater than 'width_mm'."}};
  ClearHistory();
  const auto mark = host().journal.Mark();
  for (const auto& [operation, arguments, message] : cases)
    ExpectFailure(operation, InSketch(arguments), message);
  EXPECT_TRUE(CallsSince(mark, {"ProSectionEntityAdd", "ProFeatureDelete"}).empty());
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(SketchGeometry, AFailedAdditionLeavesTheEarlierOnesAndCommitsNothing) {
  ClearHistory();
  const auto mark = host().journal.Mark();
  faults().Fail("ProSectionEntityAdd", -1, 3);
  ExpectFailure(L"api_sketch_polyline", InSketch(LR"("points":[[0,0],[1,0],[1,1]],"closed":true)"),
                L"Failed to close polyline.");
  EXPECT_EQ(Session(L"S").entities.size(), 1u + 2u);
  EXPECT_TRUE(CallsSince(mark, {"ProFeatureDelete", "ProFeatureWithoptionsCreate"}).empty());
  EXPECT_TRUE(UndoStack().empty());
  EXPECT_TRUE(Session(L"S").has_feature);
}

}  // namespace
}  // namespace vek::support

// The parameter operations: what of a model they show, and how an expression becomes a value.
#include "tests/operations/parameters_test.h"

#include <numbers>

#include "addin/text/format.h"

namespace vek::support {
namespace {

TEST_F(ParametersTest, AModelWithoutAnyHasAnEmptyList) {
  NewPart();
  const auto result = Run(kList);
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"Found 0 parameter(s).");
  EXPECT_EQ(result.dataJson, LR"({"parameters":[],"count":0})");
  // Dimensions are shown all the same.
  Block(10, 20, 30);
  EXPECT_EQ(Succeed(kList)["count"], 1);
}

TEST_F(ParametersTest, ListShowsParametersInTheirOrderAndDimensionsBehindThem) {
  Console("parameter Fixed double 0.25 mm locked");
  Console("parameter Quoted string \"a\\b\"");
  Block(10, 20, 30);
  const auto result = Run(kList);
  EXPECT_EQ(result.message, L"Found 8 parameter(s).");
  EXPECT_EQ(
      result.dataJson,
      LR"({"parameters":[)"
      LR"({"name":"Width","expression":"2 in","value":2,"unit":"in","is_user_parameter":true},)"
      LR"({"name":"Ratio","expression":"1.5","value":1.5,"unit":"","is_user_parameter":true},)"
      LR"({"name":"Label","expression":"Bolt","value":0,"unit":"","is_user_parameter":true},)"
      LR"({"name":"Count","expression":"3","value":3,"unit":"","is_user_parameter":true},)"
      LR"({"name":"Hollow","expression":"true","value":1,"unit":"","is_user_parameter":true},)"
      LR"({"name":"Fixed","expression":"0.25 mm","value":0.25,"unit":"mm","is_user_parameter":false},)"
      LR"({"name":"Quoted","expression":"\"a\\b\"","value":0,"unit":"","is_user_parameter":true},)"
      LR"({"name":"d0","expression":"30 mm","value":30,"unit":"mm","is_user_parameter":false}],"count":8})");
}

TEST_F(ParametersTest, GetFindsByNameWithoutRegardToCase) {
  Block(10, 20, 30);
  const struct {
    const wchar_t* name;
    const char* shown;
    double value;
  } cases[] = {{L"WIDTH", "Width", 2}, {L"hollow", "Hollow", 1}, {L"D0", "d0", 30}};
  for (const auto& [name, shown, value] : cases) {
    const auto arguments = Format(LR"({"name":"%s"})", name);
    EXPECT_EQ(Run(kGet, arguments).message, Format(L"Parameter '%s' retrieved.", name));
    const auto row = Succeed(kGet, arguments);
    EXPECT_EQ(row["name"], shown);
    EXPECT_EQ(row["value"], value);
  }
}

TEST_F(ParametersTest, ExpressionsBecomeValuesOfTheTypeThatIsThere) {
  const std::wstring eighty(80, L'x');
  const struct {
    std::wstring name;
    std::wstring expression;
    std::wstring before;
    std::wstring after;  // the row's expression
  } cases[] = {
      {L"width", L"25.4 mm", L"2 in", L"1 in"},
      {L"width", L" 50.8MM ", L"1 in", L"2 in"},  // the unit in lower case is tried second
      {L"width", L"5 ul", L"2 in", L"5 in"},
      {L"width", L"6 UL", L"5 in", L"6 in"},
      {L"width", L"-0.5", L"6 in", L"-0.5 in"},
      {L"width", L"1e-1 ft", L"-0.5 in", L"1.2 in"},  // 0.1 × 12
      {L"ratio", L"0x10", L"1.5", L"16"},
      {L"count", L"3.9 pieces", L"3", L"3"},
      {L"count", L"-3.9", L"3", L"-3"},
      {L"label", L"  M6 x 20 ", L"Bolt", L"  M6 x 20 "},
      {L"label", eighty, L"  M6 x 20 ", eighty},
      {L"hollow", L" No ", L"true", L"false"},
      {L"hollow", L"2", L"false", L"true"},
      {L"hollow", L"0.0", L"true", L"false"},
      {L"hollow", L"YES", L"false", L"true"},
      {L"hollow", L"FALSE", L"true", L"false"},
      {L"hollow", L"1", L"false", L"true"},
      {L"hollow", L"0", L"true", L"false"},
      {L"hollow", L"True", L"false", L"true"},
  };
  for (const auto& [name, expression, before, after] : cases) {
    SCOPED_TRACE(testing::PrintToString(name + L" = " + expression));
    const auto result = Run(kSet, NameAnd(name, expression));
    EXPECT_EQ(result.message, Format(L"Parameter '%s' set to '%s'.", name, expression));
    EXPECT_THAT(result.dataJson, testing::HasSubstr(LR"("expression":")" + after + L"\""));
    ASSERT_FALSE(UndoStack().empty());
    const HistoryEntry& entry = UndoStack().back();
    EXPECT_EQ(entry.label, L"Set " + name);
    EXPECT_EQ(entry.before_text, before);
    EXPECT_EQ(entry.after_text, expression);
  }
}

TEST_F(ParametersTest, ASetRegeneratesOnceAndRepaints) {
  const auto mark = host().journal.Mark();
  Succeed(kSet, NameAnd(L"ratio", L"2"));
  EXPECT_THAT(CallsSince(mark, {"ProParameterScaledvalueSet", "ProUnitInit", "ProSolidRegenerate",
                                "ProWindowRepaint"}),
              testing::ElementsAre("ProParameterScaledvalueSet", "ProSolidRegenerate", "ProWindowRepaint"));
}

TEST_F(ParametersTest, ADimensionDrivesTheGeometry) {
  Block(10, 20, 30);
  const struct {
    const wchar_t* expression;
    double depth;
  } cases[] = {{L"5", 5}, {L"7.5 mm", 7.5}, {L" 8MM", 8}, {L"9 ul", 9}};
  double before = 30;
  for (const auto& [expression, depth] : cases) {
    const auto row = Succeed(kSet, NameAnd(L"D0", expression));
    EXPECT_EQ(row["value"], depth);
    EXPECT_NEAR(Volume(), 10 * 20 * depth, 1e-6);
    EXPECT_EQ(UndoStack().back().before_text, Format(L"%g mm", before));
    before = depth;
  }
  EXPECT_EQ(UndoStack().back().target, L"D0");
}

TEST_F(ParametersTest, ADimensionIsInTheModelsUnitAndTakesNoOther) {
  Console("units inch");
  Block(25.4, 50.8, 25.4);
  ExpectFailure(kSet, NameAnd(L"d0", L"25.4 mm"), L"Unit 'mm' does not match dimension unit 'in' for 'd0'.");
  EXPECT_EQ(Succeed(kSet, NameAnd(L"d0", L"3 IN"))["unit"], "in");
  EXPECT_NEAR(Volume(), 25.4 * 50.8 * 3 * 25.4, 1e-6);
}

TEST_F(ParametersTest, AnAngleIsInDegrees) {
  // A square of side 1 whose middle is 4.5 from the axis: the full ring has the volume 2π · 4.5.
  Rectangle(L"RING", L"XY", 4, 0, 5, 1);
  Succeed(L"api_sketch_line_two_points",
          LR"({"sketch_name":"RING","x1":0,"y1":0,"x2":0,"y2":1,"centerline":true})");
  Succeed(L"api_feature_revolve", LR"({"sketch_name":"RING","axis":"Y","angle_deg":360})");
  ASSERT_EQ(Succeed(kGet, LR"({"name":"d0"})")["unit"], "deg");
  constexpr double kWhole = 2 * std::numbers::pi * 4.5;
  Succeed(kSet, NameAnd(L"d0", L"45 DEG"));
  EXPECT_NEAR(Volume(), kWhole / 8, 1e-6);
  Succeed(kSet, NameAnd(L"d0", L"90"));
  EXPECT_NEAR(Volume(), kWhole / 4, 1e-6);
  ExpectFailure(kSet, NameAnd(L"d0", L"1 mm"), L"Unit 'mm' does not match dimension unit 'deg' for 'd0'.");
}

// The section that a solid was made of is its own, and so are the dimensions in it.
TEST_F(ParametersTest, ASketchsDimensionAndItsCopyAreTwo) {
  Succeed(L"api_sketch_create", LR"({"name":"DISC","plane":"XY"})");
  Succeed(L"api_sketch_circle_center_radius", LR"({"sketch_name":"DISC","cx":0,"cy":0,"radius":3})");
  Succeed(L"api_sketch_dimension_add",
          LR"({"sketch_name":"DISC","entity":"C:1","type":"diameter","value":10})");
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"DISC","distance_mm":2})");
  EXPECT_NEAR(Volume(), std::numbers::pi * 5 * 5 * 2, 1e-6);
  const auto rows = Succeed(kList)["parameters"];
  ASSERT_EQ(rows.size(), 5u + 3u);
  const double values[] = {10, 2,
                           10};  // the sketch's diameter; the solid's depth, and its diameter behind it
  for (int i = 0; i < 3; ++i) EXPECT_EQ(rows[5 + i]["value"], values[i]);

  Succeed(kSet, NameAnd(L"d0", L"6"));
  EXPECT_NEAR(Volume(), std::numbers::pi * 5 * 5 * 2, 1e-6);
  Succeed(kSet, NameAnd(L"d2", L"8"));
  EXPECT_NEAR(Volume(), std::numbers::pi * 4 * 4 * 2, 1e-6);
}

TEST_F(ParametersTest, AParameterHidesTheDimensionOfItsName) {
  Block(10, 20, 30);
  Console("parameter D0 double 1");
  EXPECT_EQ(Succeed(kGet, LR"({"name":"d0"})")["value"], 1);
  Succeed(kSet, NameAnd(L"d0", L"2"));
  EXPECT_NEAR(Volume(), 10 * 20 * 30, 1e-6);
  EXPECT_EQ(Succeed(kList)["count"], 7) << "five, the one that hides, and the one that is hidden";
}

TEST_F(ParametersTest, AnAssemblyHasParametersToo) {
  NewAssembly();
  Console("parameter Gap double 1 mm");
  EXPECT_EQ(Succeed(kSet, NameAnd(L"GAP", L"2"))["expression"], "2 mm");
}

}  // namespace
}  // namespace vek::support

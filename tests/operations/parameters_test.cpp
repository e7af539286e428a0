// The parameter operations: what of a model they show, how an expression becomes a value, what they refuse.
#include <gmock/gmock.h>

#include <array>
#include <numbers>
#include <tuple>

#include "addin/ops/common/history.h"
#include "addin/text/format.h"
#include "bench/host/console/console.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kList = L"api_parameters_list";
constexpr const wchar_t* kGet = L"api_parameters_get";
constexpr const wchar_t* kSet = L"api_parameters_set";

class ParametersTest : public OperationTest {
 protected:
  void SetUp() override {
    OperationTest::SetUp();
    NewPart();
    Console("parameter Width double 2 in");
    Console("parameter Ratio double 1.5");
    Console("parameter Label string Bolt");
    Console("parameter Count integer 3");
    Console("parameter Hollow bool true");
    ClearHistory();
  }

  // A command of the bench's console.
  void Console(const std::string& line) {
    bench::Console([&](const std::string& said) { EXPECT_EQ(said, "ok") << line; }).Run(line);
  }

  static std::wstring NameAnd(const std::wstring& name, const std::wstring& expression) {
    return LR"({"name":")" + name + LR"(","expression":")" + expression + LR"("})";
  }
};

TEST_F(ParametersTest, ListShowsParametersInTheirOrderAndDimensionsBehindThem) {
  Console("parameter Fixed double 0.25 mm locked");
  Console("parameter Quoted string \"a\\b\"");
  Block(10, 20, 30);
  ExpectAnswer(
      kList, L"{}", L"Found 8 parameter(s).",
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
  EXPECT_EQ(Run(kGet, LR"({"name":"WIDTH"})").message, L"Parameter 'WIDTH' retrieved.");
  EXPECT_EQ(Succeed(kGet, LR"({"name":"hollow"})")["name"], "Hollow");
  EXPECT_EQ(Succeed(kGet, LR"({"name":"D0"})")["value"], 30);
}

TEST_F(ParametersTest, ExpressionsBecomeValuesOfTheTypeThatIsThere) {
  const std::wstring eighty(80, L'x');
  // And the row's expressions before and after.
  const std::array<std::wstring, 4> cases[] = {
      {L"width", L"25.4 mm", L"2 in", L"1 in"},
      {L"width", L" 50.8MM ", L"1 in", L"2 in"},  // the unit in lower case is tried second
      {L"width", L"5 ul", L"2 in", L"5 in"},
      {L"width", L"-1e-1 ft", L"5 in", L"-1.2 in"},  // 0.1 × 12
      {L"count", L"-3.9", L"3", L"-3"},
      {L"label", L"  M6 x 20 ", L"Bolt", L"  M6 x 20 "},
      {L"label", eighty, L"  M6 x 20 ", eighty},
      {L"hollow", L" No ", L"true", L"false"},
      {L"hollow", L"2", L"false", L"true"},
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
  const std::pair<const wchar_t*, double> cases[] = {{L"5", 5}, {L"7.5 mm", 7.5}, {L" 8MM", 8}, {L"9 ul", 9}};
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

TEST_F(ParametersTest, AParameterHidesTheDimensionOfItsName) {
  Block(10, 20, 30);
  Console("parameter D0 double 1");
  EXPECT_EQ(Succeed(kGet, LR"({"name":"d0"})")["value"], 1);
  Succeed(kSet, NameAnd(L"d0", L"2"));
  EXPECT_NEAR(Volume(), 10 * 20 * 30, 1e-6);
  EXPECT_EQ(Succeed(kList)["count"], 7) << "five, the one that hides, and the one that is hidden";
}

TEST_F(ParametersTest, ArgumentsAndValuesThatMakeNoSenseChangeNothing) {
  Block(10, 20, 30);
  Console("parameter Fixed double 0.25 mm locked");
  Rectangle(L"SIDE", L"XY", 10, 0, 20, 20);
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"SIDE","distance_mm":5})");
  Console("relation d1");
  ClearHistory();
  const std::wstring too_long(81, L'x');
  const std::tuple<const wchar_t*, std::wstring, const wchar_t*> cases[] = {
      {kSet, NameAnd(L"nothing", L"1"), L"Parameter 'nothing' not found."},
      {kSet, NameAnd(L"width", L" "), L"Unable to parse parameter expression."},
      {kSet, NameAnd(L"width", L"1 Furlong"), L"Unknown unit 'Furlong' for parameter 'width'."},
      {kSet, NameAnd(L"width", L"1 kg"), L"Failed to set parameter 'width' (status=-2)."},
      {kSet, NameAnd(L"ratio", L"1 mm"), L"Failed to set parameter 'ratio' (status=-2)."},
      {kSet, NameAnd(L"count", L"many"), L"Unable to parse parameter expression."},
      {kSet, NameAnd(L"count", L"1e10"), L"Failed to prepare integer parameter value."},
      {kSet, NameAnd(L"label", too_long), L"Failed to prepare string parameter value."},
      {kSet, NameAnd(L"hollow", L"maybe"), L"Unable to parse boolean parameter expression."},
      {kSet, NameAnd(L"fixed", L"1 mm"),
       L"Parameter is read-only. If the model is managed by Windchill, check it out first."},
      {kSet, NameAnd(L"d0", L" "), L"Unable to parse dimension expression."},
      {kSet, NameAnd(L"d0", L"-1"), L"Failed to set dimension 'd0' (status=-2)."},
      {kSet, NameAnd(L"d0", L"inf"), L"Failed to set dimension 'd0' (status=-2)."},
      {kSet, NameAnd(L"d1", L"2"), L"Dimension is driven by a relation and cannot be set directly."},
  };
  const auto before = Run(kList).dataJson;
  for (const auto& [operation, arguments, message] : cases) ExpectFailure(operation, arguments, message);
  faults().Fail("ProDimensionValueSet", -48);
  ExpectFailure(kSet, NameAnd(L"d0", L"1"),
                L"Dimension is read-only. If the model is managed by Windchill, check it out first.");
  EXPECT_EQ(Run(kList).dataJson, before);
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(ParametersTest, AnUnreadableUnitOrLockIsNoFailure) {
  Block(10, 20, 30);
  faults().Fail("ProUnitNameGet", -8, 1, 9);
  EXPECT_EQ(Succeed(kGet, LR"({"name":"width"})")["expression"], "2");
  faults().Clear();
  faults().Fail("ProParameterLockstatusGet", -8);
  EXPECT_EQ(Succeed(kGet, LR"({"name":"width"})")["is_user_parameter"], false);
  // What can't be read is left out of the list; the rest is there.
  faults().Fail("ProDimensionSymbolGet", -8);
  EXPECT_EQ(Succeed(kList)["count"], 5);
  // Where the dimension's unit can't be had, every unit passes.
  faults().Fail("ProMdlPrincipalunitsystemGet", -8);
  Succeed(kSet, NameAnd(L"d0", L"4 furlong"));
  EXPECT_NEAR(Volume(), 10 * 20 * 4, 1e-6);
}

TEST_F(ParametersTest, OnlyPartsAndAssembliesHaveParameters) {
  NewAssembly();
  Console("parameter Gap double 1 mm");
  EXPECT_EQ(Succeed(kSet, NameAnd(L"GAP", L"2"))["expression"], "2 mm");
  bench::Model& drawing = AddModel(L"SHEET", PRO_MDL_DRAWING);
  host().windows.Activate(*host().windows.Create(drawing));
  for (const wchar_t* operation : {kList, kGet, kSet})
    ExpectFailure(operation, NameAnd(L"a", L"1"), L"Parameters are only available for parts and assemblies.");
}

// A round of radius 4 on top of a block that gets too low for it.
TEST_F(ParametersTest, AValueThatTheModelCannotTakeStaysWithoutAStepInTheHistory) {
  Block(20, 20, 10);
  Succeed(L"api_edge_fillet", LR"({"radius_mm":4,"edge_selectors":[">Z"]})");
  const double volume = Volume();
  ClearHistory();
  ExpectFailure(kSet, NameAnd(L"d0", L"3"), L"Parameter updated, but rebuild failed (status=-1).");
  EXPECT_EQ(Succeed(kGet, LR"({"name":"d0"})")["value"], 3);
  EXPECT_EQ(Volume(), volume);
  EXPECT_TRUE(UndoStack().empty());
  Succeed(kSet, NameAnd(L"d0", L"11"));
  EXPECT_NEAR(Volume(), volume + 20 * 20 * 1, 1e-6);
}

}  // namespace
}  // namespace vek::support

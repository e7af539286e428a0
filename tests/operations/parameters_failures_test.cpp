// What the parameter operations refuse, and what is left then.
#include "addin/text/format.h"
#include "tests/operations/parameters_test.h"

namespace vek::support {
namespace {

class ParametersFailures : public ParametersTest {};

TEST_F(ParametersFailures, ArgumentsAndValuesThatMakeNoSenseChangeNothing) {
  Block(10, 20, 30);
  Console("parameter Fixed double 0.25 mm locked");
  Console("parameter FixedLabel string x locked");
  Rectangle(L"SIDE", L"XY", 10, 0, 20, 20);
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"SIDE","distance_mm":5})");
  Console("relation d1");
  ClearHistory();
  const std::wstring too_long(81, L'x');
  const struct {
    const wchar_t* operation;
    std::wstring arguments;
    std::wstring message;
  } cases[] = {
      {kGet, L"{}", L"'name' argument is required."},
      {kGet, LR"({"name":"nothing"})", L"Parameter 'nothing' not found."},
      {kSet, LR"({"expression":"1"})", L"'name' argument is required."},
      {kSet, LR"({"name":"width"})", L"'expression' argument is required."},
      {kSet, NameAnd(L"nothing", L"1"), L"Parameter 'nothing' not found."},
      {kSet, NameAnd(L"width", L" "), L"Unable to parse parameter expression."},
      {kSet, NameAnd(L"width", L"mm 1"), L"Unable to parse parameter expression."},
      {kSet, NameAnd(L"width", L"1 Furlong"), L"Unknown unit 'Furlong' for parameter 'width'."},
      {kSet, NameAnd(L"width", L"1 kg"), L"Failed to set parameter 'width' (status=-2)."},
      {kSet, NameAnd(L"ratio", L"1 mm"), L"Failed to set parameter 'ratio' (status=-2)."},
      {kSet, NameAnd(L"count", L"many"), L"Unable to parse parameter expression."},
      {kSet, NameAnd(L"count", L"1e10"), L"Failed to prepare integer parameter value."},
      {kSet, NameAnd(L"count", L"nan"), L"Failed to prepare integer parameter value."},
      {kSet, NameAnd(L"label", too_long), L"Failed to prepare string parameter value."},
      {kSet, NameAnd(L"hollow", L"maybe"), L"Unable to parse boolean parameter expression."},
      {kSet, NameAnd(L"fixed", L"1 mm"),
       L"Parameter is read-only. If the model is managed by Windchill, check it out first."},
      {kSet, NameAnd(L"fixedlabel", L"y"),
       L"Parameter is read-only. If the model is managed by Windchill, check it out first."},
      {kSet, NameAnd(L"d0", L" "), L"Unable to parse dimension expression."},
      {kSet, NameAnd(L"d0", L"deep"), L"Unable to parse dimension expression."},
      {kSet, NameAnd(L"d0", L"1 in"), L"Unit 'in' does not match dimension unit 'mm' for 'd0'."},
      {kSet, NameAnd(L"d0", L"-1"), L"Failed to set dimension 'd0' (status=-2)."},
      {kSet, NameAnd(L"d0", L"inf"), L"Failed to set dimension 'd0' (status=-2)."},
      {kSet, NameAnd(L"d1", L"2"), L"Dimension is driven by a relation and cannot be set directly."},
  };
  const auto before = Run(kList).dataJson;
  for (const auto& [operation, arguments, message] : cases) ExpectFailure(operation, arguments, message);
  EXPECT_EQ(Run(kList).dataJson, before);
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(ParametersFailures, EachCallThatFailsHasWordsOfItsOwn) {
  Block(10, 20, 30);
  ClearHistory();
  const struct {
    const char* call;
    int status;
    const wchar_t* operation;
    std::wstring arguments;
    const wchar_t* message;
  } cases[] = {
      {"ProMdlCurrentGet", -8, kList, L"{}", L"No active document."},
      {"ProMdlTypeGet", -8, kList, L"{}", L"Failed to read active document type."},
      {"ProMdlToModelitem", -8, kList, L"{}", L"Failed to resolve active model item."},
      {"ProParameterVisit", -8, kList, L"{}", L"Failed to list parameters."},
      {"ProParameterValueWithUnitsGet", -8, kGet, LR"({"name":"count"})",
       L"Failed to read parameter 'count'."},
      {"ProDimensionValueGet", -8, kGet, LR"({"name":"d0"})", L"Failed to read dimension 'd0'."},
      {"ProParameterValueWithUnitsGet", -8, kSet, NameAnd(L"count", L"1"),
       L"Failed to read current value for parameter 'count'."},
      {"ProParamvalueSet", -8, kSet, NameAnd(L"width", L"1"), L"Failed to prepare numeric parameter value."},
      {"ProParamvalueSet", -8, kSet, NameAnd(L"label", L"1"), L"Failed to prepare string parameter value."},
      {"ProParamvalueSet", -8, kSet, NameAnd(L"count", L"1"), L"Failed to prepare integer parameter value."},
      {"ProParamvalueSet", -8, kSet, NameAnd(L"hollow", L"1"), L"Failed to prepare boolean parameter value."},
      {"ProParameterScaledvalueSet", -8, kSet, NameAnd(L"width", L"1"),
       L"Failed to set parameter 'width' (status=-8)."},
      {"ProParameterValueWithUnitsSet", -8, kSet, NameAnd(L"count", L"1"),
       L"Failed to set parameter 'count' (status=-8)."},
      {"ProDimensionValueSet", -8, kSet, NameAnd(L"d0", L"1"), L"Failed to set dimension 'd0' (status=-8)."},
      {"ProDimensionValueSet", -48, kSet, NameAnd(L"d0", L"1"),
       L"Dimension is read-only. If the model is managed by Windchill, check it out first."},
  };
  const auto before = Run(kList).dataJson;
  for (const auto& [call, status, operation, arguments, message] : cases) {
    SCOPED_TRACE(call);
    faults().Fail(call, status);
    ExpectFailure(operation, arguments, message);
    faults().Clear();
  }
  EXPECT_EQ(Run(kList).dataJson, before);
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(ParametersFailures, AnUnreadableUnitOrLockIsNoFailure) {
  Block(10, 20, 30);
  faults().Fail("ProUnitNameGet", -8, 1, 9);
  EXPECT_EQ(Succeed(kGet, LR"({"name":"width"})")["expression"], "2");
  faults().Clear();
  faults().Fail("ProMdlPrincipalunitsystemGet", -8);
  EXPECT_EQ(Succeed(kGet, LR"({"name":"d0"})")["expression"], "30");
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

TEST_F(ParametersFailures, OnlyPartsAndAssembliesHaveParameters) {
  bench::Model& drawing = AddModel(L"SHEET", PRO_MDL_DRAWING);
  host().windows.Activate(*host().windows.Create(drawing));
  for (const wchar_t* operation : {kList, kGet, kSet})
    ExpectFailure(operation, NameAnd(L"a", L"1"), L"Parameters are only available for parts and assemblies.");
}

// A round of radius 4 on top of a block that gets too low for it.
TEST_F(ParametersFailures, AValueThatTheModelCannotTakeStaysWithoutAStepInTheHistory) {
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

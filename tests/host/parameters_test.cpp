// Parameters of models, their units, and macros, which may set them.
#include <ProMacro.h>
#include <ProParameter.h>
#include <ProUnits.h>

#include <string>

#include "bench/host/console/console.h"
#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

class ParametersTest : public support::BenchTest {
 protected:
  void SetUp() override {
    BenchTest::SetUp();
    part_ = &NewCurrentPart(L"BOLT");
    for (const char* line :
         {"parameter Length double 2 in", "parameter Ratio double 1.5", "parameter Label string x",
          "parameter Count integer 3", "parameter Hollow bool true", "parameter Fixed integer 1 locked"})
      Console([](const std::string& said) { EXPECT_EQ(said, "ok"); }).Run(line);
  }

  ProParameter Named(std::wstring_view name) {
    ProParameter parameter{};
    name.copy(parameter.id, name.size());
    parameter.owner = {static_cast<ProParamownerType>(0), {Handle(*part_)}};
    return parameter;
  }
  ProUnititem Unit(std::wstring_view name) {
    support::NameBuffer buffer(name);
    ProUnititem unit{};
    EXPECT_EQ(ProUnitInit(Handle(*part_), buffer, &unit), PRO_TK_NO_ERROR);
    return unit;
  }
  static ProParamvalue Number(double number) {
    ProParamvalue value{};
    EXPECT_EQ(ProParamvalueSet(&value, &number, PRO_PARAM_DOUBLE), PRO_TK_NO_ERROR);
    return value;
  }

  Model* part_ = nullptr;
};

TEST_F(ParametersTest, VisitsAreOfModelsOnlyAndEndWhereTheyAreTold) {
  const auto stop = [](ProParameter*, ProError, ProAppData) { return PRO_TK_E_FOUND; };
  ProModelitem item{}, empty{};
  ProMdlToModelitem(Handle(*part_), &item);
  EXPECT_EQ(ProParameterVisit(&item, nullptr, stop, nullptr), PRO_TK_E_FOUND);
  EXPECT_EQ(ProParameterVisit(&item, nullptr, nullptr, nullptr), PRO_TK_BAD_INPUTS);
  item.type = PRO_SURFACE;
  EXPECT_EQ(ProParameterVisit(&item, nullptr, stop, nullptr), PRO_TK_E_NOT_FOUND);
  ProMdlToModelitem(Handle(NewPart(L"EMPTY")), &empty);
  EXPECT_EQ(ProParameterVisit(&empty, nullptr, stop, nullptr), PRO_TK_E_NOT_FOUND);
}

TEST_F(ParametersTest, WhatMakesNoSenseHasAStatusAndChangesNothing) {
  ProParameter length = Named(L"Length"), ratio = Named(L"Ratio"), label = Named(L"Label");
  ProParameter fixed = Named(L"Fixed"), none = Named(L"None"), of_item = Named(L"Length");
  of_item.owner.type = static_cast<ProParamownerType>(1);
  ProParamvalue number = Number(5), untyped{}, truth{};
  untyped.type = static_cast<ProParamvalueType>(54);
  truth.type = PRO_PARAM_BOOLEAN;
  ProUnititem mm = Unit(L"mm"), kg = Unit(L"kg"), unit{};
  ProLockstatus lock{};
  std::wstring long_text(81, L'x');
  part_->modified = false;
  const std::pair<ProError, int> cases[] = {
      {ProParameterScaledvalueSet(&length, &number, &kg), PRO_TK_BAD_INPUTS},
      {ProParameterScaledvalueSet(&ratio, &number, &mm), PRO_TK_BAD_INPUTS},
      {ProParameterScaledvalueSet(&fixed, &number, nullptr), -48},
      {ProParameterScaledvalueSet(&label, &number, nullptr), PRO_TK_INVALID_TYPE},
      {ProParameterValueWithUnitsSet(&length, &truth, nullptr), PRO_TK_INVALID_TYPE},
      {ProParameterValueWithUnitsSet(&length, &untyped, nullptr), PRO_TK_INVALID_TYPE},
      {ProParameterValueWithUnitsSet(&length, &number, &mm), PRO_TK_NOT_IMPLEMENTED},
      {ProParameterValueWithUnitsSet(&none, &number, nullptr), PRO_TK_E_NOT_FOUND},
      {ProParameterValueWithUnitsSet(&of_item, &number, nullptr), PRO_TK_BAD_INPUTS},
      {ProParameterValueWithUnitsGet(&length, nullptr, nullptr), PRO_TK_BAD_INPUTS},
      {ProParameterUnitsGet(&ratio, &unit), PRO_TK_E_NOT_FOUND},
      {ProParameterLockstatusGet(&none, &lock), PRO_TK_E_NOT_FOUND},
      {ProParamvalueSet(&untyped, long_text.data(), PRO_PARAM_STRING), PRO_TK_LINE_TOO_LONG},
      {ProParamvalueSet(&untyped, &number, static_cast<ProParamvalueType>(54)), PRO_TK_INVALID_TYPE},
  };
  for (const auto& [status, expected] : cases) EXPECT_EQ(static_cast<int>(status), expected);
  EXPECT_EQ(std::get<double>(part_->parameters[0].value), 2);
  EXPECT_FALSE(part_->modified);
}

TEST_F(ParametersTest, AMacroIsRefusedWholeOrQueuedAndEndsAtItsFirstError) {
  const auto load = [](std::wstring text) { return ProMacroLoad(text.data()); };
  EXPECT_EQ(ProMacroLoad(nullptr), PRO_TK_BAD_INPUTS);
  for (const wchar_t* text :
       {L"", L"units inch; dance", L"units inch; quit", L"units", L"units inch m", L"fault ProMdlErase -1"})
    EXPECT_EQ(load(text), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProMacroExecute(), PRO_TK_NO_ERROR) << "nothing is queued";
  EXPECT_EQ(part_->length_unit, LengthUnit::kMillimetre);

  EXPECT_EQ(load(L" parameter A integer 1;; parameter B integer x; parameter C integer 1"), PRO_TK_NO_ERROR);
  EXPECT_EQ(load(L"parameter D integer 1"), PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->parameters.back().name, L"Fixed") << "nothing happens before the execution";
  EXPECT_EQ(ProMacroExecute(), PRO_TK_GENERAL_ERROR);
  EXPECT_EQ(part_->parameters.back().name, L"A");
  EXPECT_EQ(ProMacroExecute(), PRO_TK_NO_ERROR) << "what stood behind the error is gone";
  EXPECT_EQ(part_->parameters.back().name, L"A");
}

}  // namespace
}  // namespace bench

#include <ProUnits.h>
#include <gmock/gmock.h>

#include "bench/host/text.h"
#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using support::NameBuffer;

class UnitsTest : public support::BenchTest {
 protected:
  ProUnititem Unit(std::wstring_view name) {
    NameBuffer buffer(name);
    ProUnititem unit{};
    EXPECT_EQ(ProUnitInit(Handle(part()), buffer, &unit), PRO_TK_NO_ERROR) << ToUtf8(name);
    return unit;
  }
  Model& part() {
    if (Model* existing = host().session.FindByName(L"BOLT", PRO_MDL_PART)) return *existing;
    return NewPart(L"BOLT");
  }
};

TEST_F(UnitsTest, OneUnitIsAsManyOfAnother) {
  const struct {
    const wchar_t* from;
    const wchar_t* to;
    double scale;
  } cases[] = {{L"mm", L"mm", 1},           {L"mm", L"in", 1 / 25.4}, {L"inch", L"mm", 25.4},
               {L"mm", L"m", 0.001},        {L"ft", L"inch", 12},     {L"cm", L"mm", 10},
               {L"m", L"ft", 1000 / 304.8}, {L"in", L"inch", 1}};
  for (const auto& each : cases) {
    ProUnititem from = Unit(each.from);
    ProUnititem to = Unit(each.to);
    ProUnitConversion conversion{0, 1};
    EXPECT_EQ(ProUnitConversionCalculate(&from, &to, &conversion), PRO_TK_NO_ERROR);
    EXPECT_DOUBLE_EQ(conversion.scale, each.scale) << ToUtf8(each.from) << " to " << ToUtf8(each.to);
    EXPECT_EQ(conversion.offset, 0);
  }
}

TEST_F(UnitsTest, TheSystemsLengthUnitFollowsTheModelAndIsNoMass) {
  ProUnititem millimetre = Unit(L"mm");
  ProUnitsystem system{};
  ProUnititem length{}, mass{};
  ProUnitConversion conversion{};
  for (const auto& [unit, per_millimetre] : {std::pair{LengthUnit::kMillimetre, 1.0},
                                             {LengthUnit::kInch, 1 / 25.4},
                                             {LengthUnit::kMetre, 0.001}}) {
    part().length_unit = unit;
    ASSERT_EQ(ProMdlPrincipalunitsystemGet(Handle(part()), &system), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUnitsystemUnitGet(&system, PRO_UNITTYPE_LENGTH, &length), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUnitConversionCalculate(&millimetre, &length, &conversion), PRO_TK_NO_ERROR);
    EXPECT_DOUBLE_EQ(conversion.scale, per_millimetre);
  }
  ASSERT_EQ(ProUnitsystemUnitGet(&system, PRO_UNITTYPE_MASS, &mass), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProUnitConversionCalculate(&millimetre, &mass, &conversion), PRO_TK_BAD_INPUTS);
  NameBuffer furlong(L"furlong");
  EXPECT_EQ(ProUnitInit(Handle(part()), furlong, &length), PRO_TK_E_NOT_FOUND);
}

}  // namespace
}  // namespace bench

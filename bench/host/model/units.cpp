#include "bench/host/model/units.h"

#include <algorithm>
#include <iterator>

namespace bench {
namespace {

constexpr Unit kUnits[] = {
    {L"mm", PRO_UNITTYPE_LENGTH, 1.0},       {L"cm", PRO_UNITTYPE_LENGTH, 10.0},
    {L"m", PRO_UNITTYPE_LENGTH, 1000.0},     {L"in", PRO_UNITTYPE_LENGTH, 25.4},
    {L"inch", PRO_UNITTYPE_LENGTH, 25.4},    {L"ft", PRO_UNITTYPE_LENGTH, 304.8},
    {L"kg", PRO_UNITTYPE_MASS, 1.0},         {L"g", PRO_UNITTYPE_MASS, 0.001},
    {L"lbm", PRO_UNITTYPE_MASS, 0.45359237},
};

constexpr UnitSystem kSystems[] = {
    {LengthUnit::kMillimetre, L"millimetre kilogram second", L"mm", L"kg"},
    {LengthUnit::kInch, L"inch pound second", L"in", L"lbm"},
    {LengthUnit::kMetre, L"metre kilogram second", L"m", L"kg"},
};

constexpr struct {
  LengthUnit unit;
  const char* word;
} kWords[] = {{LengthUnit::kMillimetre, "mm"}, {LengthUnit::kInch, "inch"}, {LengthUnit::kMetre, "m"}};

}  // namespace

const Unit* FindUnit(std::wstring_view name) {
  const auto found = std::ranges::find_if(kUnits, [name](const Unit& unit) { return name == unit.name; });
  return found == std::end(kUnits) ? nullptr : found;
}

const UnitSystem& SystemOf(LengthUnit length) {
  return *std::ranges::find(kSystems, length, &UnitSystem::length);
}

double KilogramsPer(LengthUnit length) {
  return FindUnit(SystemOf(length).mass_name)->in_base;
}

const UnitSystem* FindUnitSystem(std::wstring_view name) {
  const auto found =
      std::ranges::find_if(kSystems, [name](const UnitSystem& system) { return name == system.name; });
  return found == std::end(kSystems) ? nullptr : found;
}

const char* Word(LengthUnit unit) {
  return std::ranges::find_if(kWords, [unit](const auto& each) { return each.unit == unit; })->word;
}

std::optional<LengthUnit> LengthUnitOf(std::string_view word) {
  const auto found = std::ranges::find_if(kWords, [word](const auto& each) { return word == each.word; });
  if (found == std::end(kWords)) return std::nullopt;
  return found->unit;
}

}  // namespace bench

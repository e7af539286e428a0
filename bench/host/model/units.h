// Units of length and mass, and the principal unit systems that models can have.
#pragma once

#include <ProUnits.h>

#include <optional>
#include <string_view>

#include "bench/host/model/model.h"

namespace bench {

struct Unit {
  const wchar_t* name;
  ProUnitType type;
  double in_base;  // millimetres of a length, kilograms of a mass
};

// mm, cm, m, in, inch, ft, g, kg and lbm; null for any other name. Case matters: an "M" is no metre.
const Unit* FindUnit(std::wstring_view name);

struct UnitSystem {
  LengthUnit length;
  const wchar_t* name;
  const wchar_t* length_name;
  const wchar_t* mass_name;
};

const UnitSystem& SystemOf(LengthUnit length);
// Of the mass unit of that system.
double KilogramsPer(LengthUnit length);
const UnitSystem* FindUnitSystem(std::wstring_view name);

// The words of the console and of model files: mm, inch, m.
const char* Word(LengthUnit unit);
std::optional<LengthUnit> LengthUnitOf(std::string_view word);

}  // namespace bench

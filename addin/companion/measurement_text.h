// Numbers and words of a measurement, as the companion application reads them.
#pragma once

#include <string>
#include <string_view>

namespace vek {

// The word for a surface type as the host numbers it.
std::wstring SurfaceTypeWord(int type);

// "m", "in", "cm" or "mm", by what the host calls the unit. A name in full is found by its "meter", whatever
// stands before it.
std::wstring LengthUnitWord(std::wstring_view unit_name);

// A length with its unit behind it. The value counts as millimetres, whatever the model's unit.
std::wstring FormatLength(double value, std::wstring_view unit);

// The coarseness of a thread by the diameter in the model's numbers.
std::wstring ThreadClassWord(double diameter);

}  // namespace vek

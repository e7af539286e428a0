// What a client's expression says: a number with an optional unit, or one of two truth values. All is pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vek::parameters {

struct NumberWithUnit {
  double number = 0;
  std::wstring unit;  // as the client wrote it; empty for none and for "ul", which says that there is none
};

// The number at the head of the trimmed text and the unit behind it; nothing when it begins with no number.
std::optional<NumberWithUnit> ParseNumber(std::wstring_view expression);

// A word for yes or no, or a number: 0 is false. Nothing for any other text.
std::optional<bool> ParseTruth(std::wstring_view expression);

// "%g", or "%g %s" with a unit.
std::wstring NumberText(double number, const std::wstring& unit);

}  // namespace vek::parameters

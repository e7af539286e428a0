#include "addin/ops/parameters/expression.h"

#include <algorithm>

#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::parameters {
namespace {

constexpr std::wstring_view kUnitless = L"ul";

bool IsOneOf(std::wstring_view word, std::initializer_list<std::wstring_view> words) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

}  // namespace

std::optional<NumberWithUnit> ParseNumber(std::wstring_view expression) {
  const std::wstring_view text = Trim(expression);
  std::size_t consumed = 0;
  NumberWithUnit parsed{ReadLeadingNumber(text, &consumed), {}};
  if (consumed == 0) return std::nullopt;
  const std::wstring_view unit = Trim(text.substr(consumed));
  if (!EqualsIgnoreCase(unit, kUnitless)) parsed.unit = unit;
  return parsed;
}

std::optional<bool> ParseTruth(std::wstring_view expression) {
  const std::wstring word = ToLower(Trim(expression));
  if (IsOneOf(word, {L"true", L"1", L"yes"})) return true;
  if (IsOneOf(word, {L"false", L"0", L"no"})) return false;
  std::size_t consumed = 0;
  const double number = ReadLeadingNumber(word, &consumed);
  if (consumed == 0) return std::nullopt;
  return number != 0;
}

std::wstring NumberText(double number, const std::wstring& unit) {
  return unit.empty() ? Format(L"%g", number) : Format(L"%g %s", number, unit);
}

}  // namespace vek::parameters

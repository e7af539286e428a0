#include "addin/ops/assembly/pose_text.h"

#include "addin/text/wide_text.h"

namespace vek::assembly {
namespace {

bool IsDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

bool ReadRow(std::wstring_view text, std::size_t& index, std::array<double, 4>& row) {
  index = text.find(L'[', index);
  if (index == std::wstring_view::npos) return false;
  ++index;
  for (double& number : row)
    if (!ReadNextNumber(text, index, number)) return false;
  index = text.find(L']', index);
  if (index == std::wstring_view::npos) return false;
  ++index;
  return true;
}

}  // namespace

bool ReadNextNumber(std::wstring_view text, std::size_t& index, double& value) {
  constexpr std::wstring_view kRunSigns = L"+-.eE";
  while (index < text.size() && (IsBlank(text[index]) || text[index] == L',')) ++index;
  const std::size_t start = index;
  std::size_t end = start;
  bool has_digit = false;
  // A run such as "1-2" is one number as far as the row is concerned; its value is what its head says.
  for (; end < text.size() && (IsDigit(text[end]) || kRunSigns.find(text[end]) != kRunSigns.npos); ++end)
    has_digit = has_digit || IsDigit(text[end]);
  if (!has_digit) return false;
  value = ReadLeadingNumber(text.substr(start, end - start));
  index = end;
  return true;
}

std::optional<TransformRows> ReadTransformRows(std::wstring_view text) {
  text = Trim(text);
  if (text.empty() || text.front() != L'[') return std::nullopt;
  TransformRows rows{};
  std::size_t index = 1;  // behind the outer bracket
  for (auto& row : rows)
    if (!ReadRow(text, index, row)) return std::nullopt;
  return rows;
}

}  // namespace vek::assembly

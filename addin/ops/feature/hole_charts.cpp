#include "addin/ops/feature/hole_charts.h"

#include <algorithm>

#include "addin/ops/feature/feature_names.h"
#include "addin/text/wide_text.h"

namespace vek::feature {
namespace {

constexpr std::wstring_view kTableStart = L"THREAD_DATA";
constexpr std::wstring_view kTableHeader = L"FASTENER_ID";
constexpr std::size_t kLongestLine = 1024;

// Where the C runtime ends a file that is opened as text.
constexpr wchar_t kEndOfText = L'\x1A';

bool BeginsWithWord(std::wstring_view line, std::wstring_view word) {
  return EqualsIgnoreCase(line.substr(0, word.size()), word);
}

// The next line of `text`, trimmed, which is taken off.
std::wstring_view TakeLine(std::wstring_view& text) {
  const std::size_t end = std::min(text.find(L'\n'), text.size());
  const std::wstring_view line = text.substr(0, std::min(end, kLongestLine));
  text.remove_prefix(std::min(end + 1, text.size()));
  return Trim(line);
}

}  // namespace

std::wstring NormalizeThreadDesignation(std::wstring_view text) {
  std::wstring designation = ToUpper(Trim(text));
  std::erase_if(designation, IsBlank);
  std::ranges::replace(designation, L'X', L'x');
  const std::size_t pitch = designation.find(L'x');
  if (pitch == std::wstring::npos || pitch == 0) return designation;
  if (designation.compare(pitch + 1, 2, L"0.") == 0) designation.erase(pitch + 1, 1);
  return designation;
}

double DesignationDiameter(std::wstring_view designation) {
  std::wstring_view digits = Trim(designation);
  if (digits.starts_with(L'M') || digits.starts_with(L'm')) digits.remove_prefix(1);
  return ReadLeadingNumber(digits.substr(0, digits.find_first_not_of(L"0123456789.")));
}

std::vector<std::wstring> ReadThreadRows(std::wstring_view chart) {
  std::vector<std::wstring> rows;
  std::wstring_view text = chart.substr(0, chart.find(kEndOfText));
  bool in_table = false;
  while (!text.empty()) {
    const std::wstring_view line = TakeLine(text);
    if (line.empty() || line.starts_with(L'!')) continue;
    if (BeginsWithWord(line, kTableStart)) {
      in_table = true;
      continue;
    }
    if (!in_table || BeginsWithWord(line, kTableHeader)) continue;
    rows.emplace_back(line.substr(0, line.find_first_of(L" \t")));
  }
  return rows;
}

std::optional<int> FindThreadRow(const std::vector<std::wstring>& rows, std::wstring_view designation) {
  const std::wstring normalized = NormalizeThreadDesignation(designation);
  const auto row = std::ranges::find_if(rows, [&](const std::wstring& token) {
    return FeatureNamesEqual(token, designation) || EqualsIgnoreCase(token, designation) ||
           NormalizeThreadDesignation(token) == normalized;
  });
  if (row == rows.end()) return std::nullopt;
  return static_cast<int>(row - rows.begin());
}

}  // namespace vek::feature

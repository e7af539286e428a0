#include "deploy/helper/file_names.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "addin/text/format.h"
#include "addin/text/path_text.h"
#include "addin/text/wide_text.h"

namespace vek::helper {
namespace {

constexpr std::wstring_view kAside = L".old-";
constexpr std::size_t kMostDigits = 9;

bool IsDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

bool IsForbidden(wchar_t c) {
  return c < L' ' || std::wstring_view(L"<>\"|?*").find(c) != std::wstring_view::npos;
}

// A device keeps its name with any extension.
bool IsDevice(std::wstring_view name) {
  const std::wstring stem = ToUpper(name.substr(0, name.find_first_of(L". ")));
  if (stem == L"CON" || stem == L"PRN" || stem == L"AUX" || stem == L"NUL") return true;
  return stem.size() == 4 && (stem.starts_with(L"COM") || stem.starts_with(L"LPT")) && IsDigit(stem[3]);
}

}  // namespace

bool IsUpdateFileName(std::wstring_view name) {
  if (!IsPlainFileName(name) || std::ranges::any_of(name, IsForbidden)) return false;
  if (name.ends_with(L'.') || name.ends_with(L' ') || IsDevice(name)) return false;
  return !EqualsIgnoreCase(name, kMarkerFile) && !EqualsIgnoreCase(name, kMarkerInTheMaking) &&
         !ReadAsideName(name);
}

std::wstring AsideName(std::wstring_view name, unsigned number) {
  return std::wstring(name) + std::wstring(kAside) + Format(L"%u", number);
}

std::optional<Aside> ReadAsideName(std::wstring_view file) {
  const std::size_t at = ToLower(file).rfind(kAside);
  if (at == std::wstring::npos || at == 0) return std::nullopt;
  const std::wstring_view digits = file.substr(at + kAside.size());
  if (digits.empty() || digits.size() > kMostDigits || !std::ranges::all_of(digits, IsDigit))
    return std::nullopt;
  return Aside{std::wstring(file.substr(0, at)),
               static_cast<unsigned>(ReadLeadingInteger(std::wstring(digits)))};
}

}  // namespace vek::helper

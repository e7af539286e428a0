#include "addin/ops/assembly/occurrence_names.h"

#include <algorithm>

#include "addin/text/wide_text.h"

namespace vek::assembly {
namespace {

// The longest that a drive's root can be; its separator belongs to it.
constexpr std::size_t kRootLength = 3;

bool IsDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

// `suffix` is upper case and begins with its dot.
bool MayGo(std::wstring_view suffix) {
  if (suffix == L".PRT" || suffix == L".ASM" || suffix == L".DRW") return true;
  return std::ranges::all_of(suffix.substr(1), IsDigit);
}

}  // namespace

std::wstring StripModelExtension(std::wstring_view name) {
  constexpr int kPasses = 2;
  std::wstring text(Trim(name));
  for (int pass = 0; pass < kPasses; ++pass) {
    const std::size_t dot = text.rfind(L'.');
    if (dot == std::wstring::npos || dot == 0 || !MayGo(ToUpper(text.substr(dot)))) break;
    text.resize(dot);
  }
  return text;
}

std::wstring NormalizeOccurrenceName(std::wstring_view name) {
  name = Trim(name);
  if (const std::size_t separator = name.find_last_of(L"\\/"); separator != std::wstring_view::npos)
    name.remove_prefix(separator + 1);
  std::wstring result = ToUpper(Trim(StripModelExtension(name)));
  std::ranges::replace_if(
      result, [](wchar_t c) { return c == L' ' || c == L':' || c == L'-'; }, L'_');
  return result;
}

std::wstring CanonicalDirectory(std::wstring_view directory) {
  std::wstring result(Trim(directory));
  std::ranges::replace(result, L'/', L'\\');
  while (result.size() > kRootLength && result.back() == L'\\') result.pop_back();
  return ToLower(result);
}

}  // namespace vek::assembly

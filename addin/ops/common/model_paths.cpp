#include "addin/ops/common/model_paths.h"

#include <algorithm>

#include "addin/text/wide_text.h"

namespace vek {
namespace {

constexpr std::wstring_view kSeparators = L"\\/";

bool IsVersion(std::wstring_view suffix) {
  return !suffix.empty() &&
         std::all_of(suffix.begin(), suffix.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

bool IsModelExtension(std::wstring_view suffix) {
  return EqualsIgnoreCase(suffix, L"prt") || EqualsIgnoreCase(suffix, L"asm") ||
         EqualsIgnoreCase(suffix, L"drw");
}

}  // namespace

std::wstring JoinPath(std::wstring_view directory, std::wstring_view file) {
  if (directory.empty()) return std::wstring(file);
  if (file.empty()) return std::wstring(directory);
  // npos + 1 is 0: a directory of nothing but separators keeps none of them.
  std::wstring joined(directory.substr(0, directory.find_last_not_of(kSeparators) + 1));
  joined += L'\\';
  joined += file;
  return joined;
}

bool ParseModelFileNameByHand(std::wstring_view path, std::wstring& directory, std::wstring& name,
                              std::wstring& extension) {
  directory.clear();
  extension.clear();
  name = path;
  std::replace(name.begin(), name.end(), L'/', L'\\');
  if (const auto separator = name.rfind(L'\\'); separator != std::wstring::npos) {
    directory = name.substr(0, separator);
    name.erase(0, separator + 1);
  }

  for (auto dot = name.rfind(L'.'); dot != std::wstring::npos; dot = name.rfind(L'.')) {
    const std::wstring suffix = name.substr(dot + 1);
    const bool version = IsVersion(suffix);
    if (!version && !IsModelExtension(suffix)) break;
    name.erase(dot);
    if (version) continue;
    extension = suffix;
    break;
  }
  return !name.empty();
}

std::wstring BaseModelName(std::wstring_view name_or_path) {
  // npos + 1 is 0: without a separator nothing is cut.
  std::wstring_view base = name_or_path.substr(name_or_path.find_last_of(kSeparators) + 1);
  for (auto dot = base.rfind(L'.'); dot != std::wstring_view::npos; dot = base.rfind(L'.')) {
    const std::wstring_view suffix = base.substr(dot + 1);
    if (!IsVersion(suffix) && !IsModelExtension(suffix)) break;
    base = base.substr(0, dot);
  }
  return std::wstring(base);
}

}  // namespace vek

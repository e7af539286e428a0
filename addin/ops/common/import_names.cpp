#include "addin/ops/common/import_names.h"

#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

bool IsNameCharacter(wchar_t c) {
  return (c >= L'a' && c <= L'z') || (c >= L'0' && c <= L'9') || c == L'_';
}

}  // namespace

std::wstring ImportName(std::wstring_view text, std::size_t longest) {
  std::wstring name = ToLower(text.substr(0, longest));
  for (wchar_t& c : name)
    if (!IsNameCharacter(c)) c = L'_';
  return name.empty() ? L"import_model" : name;
}

std::wstring ImportCandidate(std::wstring_view name, int taken) {
  if (taken == 0) return std::wstring(name);
  const std::wstring suffix = Format(L"_%d", taken);
  const std::size_t kept = suffix.size() < kLongestModelName ? kLongestModelName - suffix.size() : 1;
  return std::wstring(name.substr(0, kept)) + suffix;
}

}  // namespace vek

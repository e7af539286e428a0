#include "addin/ops/macros/macro_text.h"

#include <algorithm>

#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::macros {
namespace {

constexpr std::wstring_view kMapkeyHead = L"mapkey ";
constexpr std::wstring_view kNotInFileNames = L"<>:\"/\\|?*";
constexpr wchar_t kFirstPrintable = 32;

constexpr const wchar_t* kNoCode = L"'code' argument is required.";

std::wstring_view TrimDots(std::wstring_view text) {
  while (!text.empty() && text.front() == L'.') text.remove_prefix(1);
  while (!text.empty() && text.back() == L'.') text.remove_suffix(1);
  return text;
}

}  // namespace

bool SanitizeMacroName(std::wstring_view name, std::wstring& safe, std::wstring& error) {
  safe.clear();
  std::wstring_view part = Trim(name);
  if (part.empty()) {
    error = L"'name' is required.";
    return false;
  }
  if (const auto separator = part.find_last_of(L"/\\"); separator != std::wstring_view::npos)
    part.remove_prefix(separator + 1);
  std::wstring kept(WithoutExtension(part));
  std::replace_if(
      kept.begin(), kept.end(),
      [](wchar_t c) { return c < kFirstPrintable || kNotInFileNames.find(c) != std::wstring_view::npos; },
      L'_');
  safe = TrimDots(Trim(kept));
  if (!safe.empty()) return true;
  error = Format(L"'%s' is not a valid macro file name.", name);
  return false;
}

bool NormalizeMacroCode(std::wstring_view code, std::wstring& normal, std::wstring& error) {
  normal.clear();
  const std::wstring_view trimmed = Trim(code);
  if (trimmed.empty()) {
    error = kNoCode;
    return false;
  }
  if (trimmed.find(L'\\') != std::wstring_view::npos) {
    error = L"Creo macro code must not contain backslashes (ProMacroLoad limitation).";
    return false;
  }
  std::wstring line(trimmed);
  std::erase_if(line, [](wchar_t c) { return c == L'\r' || c == L'\n'; });
  std::wstring_view body = Trim(line);
  if (EqualsIgnoreCase(body.substr(0, kMapkeyHead.size()), kMapkeyHead)) {
    const auto end_of_head = body.find(L';');
    const bool has_body = end_of_head != std::wstring_view::npos && end_of_head + 1 < body.size();
    if (has_body) body = Trim(body.substr(end_of_head + 1));
  }
  normal = body;
  if (!normal.empty()) return true;
  error = kNoCode;
  return false;
}

bool IsMacroType(std::wstring_view type) {
  const std::wstring word = ToLower(Trim(type));
  for (const wchar_t* known : {L"", L"all", L"mapkey", L"creo", L"macro", L"txt"})
    if (word == known) return true;
  return false;
}

std::wstring_view WithoutExtension(std::wstring_view file) {
  const auto dot = file.rfind(L'.');
  return dot == std::wstring_view::npos || dot == 0 ? file : file.substr(0, dot);
}

bool LiesBelow(std::wstring_view full_path, std::wstring_view full_directory) {
  while (!full_directory.empty() && (full_directory.back() == L'\\' || full_directory.back() == L'/'))
    full_directory.remove_suffix(1);
  const std::wstring head = std::wstring(full_directory) + L'\\';
  return full_path.size() >= head.size() && EqualsIgnoreCase(full_path.substr(0, head.size()), head);
}

}  // namespace vek::macros

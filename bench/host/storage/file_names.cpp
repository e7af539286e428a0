#include "bench/host/storage/file_names.h"

#include <algorithm>

#include "bench/host/text.h"

namespace bench {
namespace {

constexpr std::size_t kLongestModelName = 31;
constexpr std::size_t kMostVersionDigits = 9;

constexpr struct {
  ProMdlType type;
  const wchar_t* extension;
  const char* word;
} kTypes[] = {{PRO_MDL_PART, L"prt", "part"},
              {PRO_MDL_ASSEMBLY, L"asm", "assembly"},
              {PRO_MDL_DRAWING, L"drw", "drawing"}};

bool IsNumber(std::wstring_view text) {
  return !text.empty() && std::ranges::all_of(text, [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

int ReadNumber(std::wstring_view digits) {
  int number = 0;
  for (const wchar_t digit : digits) number = number * 10 + (digit - L'0');
  return number;
}

// The directory of a path, from the place of its last separator.
std::wstring_view DirectoryBefore(std::wstring_view path, std::size_t separator) {
  const std::wstring_view directory = path.substr(0, separator);
  const bool is_root = directory.empty() || directory.ends_with(L':');
  return is_root ? path.substr(0, separator + 1) : directory;
}

}  // namespace

std::optional<FileNameParts> ParseFileName(std::wstring_view path) {
  FileNameParts parts;
  std::wstring_view file = path;
  if (const auto separator = path.find_last_of(L"\\/"); separator != std::wstring_view::npos) {
    parts.directory = DirectoryBefore(path, separator);
    file = path.substr(separator + 1);
  }
  for (auto dot = file.rfind(L'.'); dot != std::wstring_view::npos; dot = file.rfind(L'.')) {
    const std::wstring_view end = file.substr(dot + 1);
    if (!IsNumber(end)) {
      parts.extension = end;
      file = file.substr(0, dot);
      break;
    }
    if (end.size() > kMostVersionDigits) return std::nullopt;
    if (parts.version < 0) parts.version = ReadNumber(end);
    file = file.substr(0, dot);
  }
  if (file.empty()) return std::nullopt;
  parts.name = file;
  return parts;
}

const wchar_t* ExtensionOf(ProMdlType type) {
  for (const auto& each : kTypes)
    if (each.type == type) return each.extension;
  return L"";
}

std::optional<ProMdlType> TypeOfExtension(std::wstring_view extension) {
  for (const auto& each : kTypes)
    if (EqualsIgnoringCase(each.extension, extension)) return each.type;
  return std::nullopt;
}

const char* Word(ProMdlType type) {
  for (const auto& each : kTypes)
    if (each.type == type) return each.word;
  return "unknown";
}

ProError CheckModelName(std::wstring_view name) {
  if (name.empty()) return PRO_TK_BAD_INPUTS;
  if (name.size() > kLongestModelName) return PRO_TK_LINE_TOO_LONG;
  const auto is_bad = [](wchar_t c) {
    return c < L' ' || std::wstring_view(L"\\/:*?\"<>|.").find(c) != std::wstring_view::npos;
  };
  return std::ranges::any_of(name, is_bad) ? PRO_TK_INVALID_NAME : PRO_TK_NO_ERROR;
}

std::wstring_view WithoutExtension(std::wstring_view name, ProMdlType type) {
  const std::wstring end = L"." + std::wstring(ExtensionOf(type));
  if (name.size() > end.size() && EqualsIgnoringCase(name.substr(name.size() - end.size()), end))
    name.remove_suffix(end.size());
  return name;
}

}  // namespace bench

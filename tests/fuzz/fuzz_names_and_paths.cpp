// Names and paths of files, macros, exports, imports, models and occurrences. The input is one such text; its
// first line serves as a folder where one is needed.
//
// A name that is made for the disk is one plain name whatever the client wrote: it stays in its folder. A
// path that is taken apart can be put together, and what is cut off a name was at its end.
#include <algorithm>

#include "addin/ops/assembly/occurrence_names.h"
#include "addin/ops/common/import_names.h"
#include "addin/ops/common/model_paths.h"
#include "addin/ops/drawing/drawing_names.h"
#include "addin/ops/exchange/export_text.h"
#include "addin/ops/exchange/import_file_name.h"
#include "addin/ops/exchange/screenshot_text.h"
#include "addin/ops/macros/macro_text.h"
#include "addin/shell/file_kind.h"
#include "addin/text/path_text.h"
#include "addin/text/wide_text.h"
#include "tests/fuzz/fuzz_text.h"

using vek::fuzz::Require;

namespace {

bool IsMadeOf(const std::wstring& text, std::wstring_view also) {
  return std::ranges::all_of(text, [also](wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'0' && c <= L'9') || also.find(c) != std::wstring_view::npos;
  });
}

void CheckMacro(const std::wstring& text, const std::wstring& folder) {
  namespace macros = vek::macros;
  std::wstring safe, code, error;
  if (macros::SanitizeMacroName(text, safe, error)) {
    const std::wstring file = safe + L".txt";
    Require(vek::IsPlainFileName(file) && safe.find_first_of(L"<>:\"/\\|?*") == std::wstring::npos);
    Require(std::ranges::all_of(safe, [](wchar_t c) { return c >= 32; }));
    Require(safe.front() != L'.' && safe.back() != L'.' && macros::WithoutExtension(file) == safe);
    const std::wstring path = vek::JoinPath(folder, file);
    Require(vek::NameInPath(path) == file || folder.empty());
    Require(folder.empty() || macros::LiesBelow(path, folder));
  } else {
    Require(safe.empty() && !error.empty());
  }
  if (macros::NormalizeMacroCode(text, code, error)) {
    Require(!code.empty() && vek::Trim(code) == code && code.find_first_of(L"\r\n\\") == std::wstring::npos);
    std::wstring line = text;
    std::erase_if(line, [](wchar_t c) { return c == L'\r' || c == L'\n'; });
    Require(line.find(code) != std::wstring::npos);
  } else {
    Require(code.empty() && !error.empty());
  }
  Require(macros::IsMacroType(text) == macros::IsMacroType(L" " + vek::ToLower(text)));
}

void CheckExport(const std::wstring& text) {
  namespace exchange = vek::exchange;
  const std::wstring name = exchange::SanitizeExportName(text);
  Require(!name.empty() && IsMadeOf(vek::ToLower(name), L"_-") && exchange::SanitizeExportName(name) == name);
  const std::wstring path = exchange::WithoutExportSuffix(text);
  Require(text.starts_with(path) && text.size() - path.size() <= 5);
  Require(text.starts_with(exchange::DirectoryOf(text)));
  const auto* const format = exchange::FindRasterFormat(text);
  Require(!format || vek::ToLower(text).ends_with(format->suffix));
}

void CheckImport(const std::wstring& text) {
  const std::wstring name = vek::ImportName(text);
  Require(!name.empty() && name.size() <= vek::kLongestModelName && IsMadeOf(name, L"_"));
  Require(vek::ImportName(name) == name);
  const std::wstring second = vek::ImportCandidate(name, 1), third = vek::ImportCandidate(name, 12);
  Require(vek::ImportCandidate(name, 0) == name && second != third);
  // One that is as long as can be may end like its own candidate.
  Require(third != name || name.size() == vek::kLongestModelName);
  Require(third.size() <= vek::kLongestModelName && second.ends_with(L"_1") &&
          vek::ImportName(third) == third);

  const std::wstring base = vek::exchange::ImportBaseName(text);
  std::wstring extension;
  const bool allowed = vek::exchange::ImportExtension(text, extension);
  Require(allowed == (extension.find_first_of(L"\\/") == std::wstring::npos) && extension.starts_with(L'.'));
  Require(text.starts_with(base) && (base == text || base + extension == text));
  Require(allowed == vek::IsPlainFileName(L"temporary" + extension) ||
          extension.find(L':') != std::wstring::npos);
}

void CheckPath(const std::wstring& path) {
  const std::wstring name(vek::NameInPath(path)), directory(vek::DirectoryInPath(path));
  Require(path.starts_with(directory) && path.ends_with(name));
  Require(name.size() + directory.size() + (name == path ? 0 : 1) == path.size());
  Require(name.starts_with(vek::WithoutExtension(name)));
  Require(vek::IsPlainFileName(path) == (!path.empty() && path.find_first_of(L"\\/:") == std::wstring::npos));
  Require(vek::FileKindOf(path) == vek::FileKindOf(vek::ToUpper(path)));

  std::wstring directory_by_hand, model, extension;
  const bool named = vek::ParseModelFileNameByHand(path, directory_by_hand, model, extension);
  Require(named == !model.empty() && model.find_first_of(L"\\/") == std::wstring::npos);
  std::wstring one_way = path;
  std::ranges::replace(one_way, L'/', L'\\');
  Require(one_way.starts_with(directory_by_hand) &&
          one_way.find(model + (extension.empty() ? L"" : L"." + extension)) != std::wstring::npos);
  const std::wstring base = vek::BaseModelName(path);
  Require(vek::BaseModelName(base) == base && base.find_first_of(L"\\/") == std::wstring::npos);
  const std::wstring sheet = vek::drawing::TemplateNameByHand(path);
  Require(sheet.find_first_of(L"\\/") == std::wstring::npos && path.find(sheet) != std::wstring::npos);
}

void CheckFolder(const std::wstring& folder, const std::wstring& name) {
  const std::wstring inside = vek::JoinPath(folder, name);
  Require(inside.ends_with(name) &&
          inside.starts_with(folder.substr(0, folder.find_last_not_of(L"\\/") + 1)));
  if (folder.empty() || name.empty()) return;
  Require(vek::exchange::LiesInFolder(folder, inside) &&
          vek::exchange::LiesInFolder(folder, vek::ToUpper(inside)));
  // Separators alone lead nowhere.
  Require(!vek::macros::LiesBelow(folder, inside) || name.find_first_not_of(L"\\/") == std::wstring::npos);
  const std::wstring bare(folder.substr(0, folder.find_last_not_of(L"\\/") + 1));
  Require(vek::exchange::LiesInFolder(folder, bare));
  Require(bare.empty() || name.starts_with(L'\\') ||
          !vek::exchange::LiesInFolder(folder, bare + L"-" + name));
}

void CheckOccurrence(const std::wstring& text) {
  namespace assembly = vek::assembly;
  const std::wstring stripped = assembly::StripModelExtension(text);
  Require(vek::Trim(text).starts_with(stripped));
  const std::wstring normal = assembly::NormalizeOccurrenceName(text);
  Require(normal.size() <= text.size() && normal.find_first_of(L"\\/ :-") == std::wstring::npos);
  Require(assembly::NormalizeOccurrenceName(vek::ToLower(text)) ==
          assembly::NormalizeOccurrenceName(vek::ToLower(vek::ToUpper(text))));
  const std::wstring directory = assembly::CanonicalDirectory(text);
  Require(directory.find(L'/') == std::wstring::npos && directory.size() <= text.size());
  Require(assembly::CanonicalDirectory(vek::ToLower(text)) == directory);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::wstring text = vek::fuzz::TextOf(vek::fuzz::Bytes(data, size));
  const std::size_t line = std::min(text.find(L'\n'), text.size());
  const std::wstring folder = text.substr(0, line), rest = text.substr(std::min(line + 1, text.size()));
  CheckMacro(rest, folder);
  CheckExport(text);
  CheckImport(text);
  CheckPath(text);
  CheckFolder(folder, rest);
  CheckOccurrence(text);
  return 0;
}

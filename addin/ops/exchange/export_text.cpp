#include "addin/ops/exchange/export_text.h"

#include "addin/server/json_reader.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::exchange {
namespace {

constexpr ExportFormat kStep{L"STEP", L"stp", L"step", ExportWriter::kSolid, 1, -1};
constexpr ExportFormat kIges{L"IGES", L"igs", L"iges", ExportWriter::kSolid, 4, -1};
constexpr ExportFormat kSat{L"SAT", L"sat", L"sat", ExportWriter::kSolid, 7, -1};
constexpr ExportFormat kStl{L"STL", L"stl", L"stl", ExportWriter::kSlice, 1, 12};

constexpr struct {
  std::wstring_view word;
  const ExportFormat* format;
} kFormatWords[] = {{L"", &kStep},    {L"STEP", &kStep}, {L"STP", &kStep}, {L"IGES", &kIges},
                    {L"IGS", &kIges}, {L"SAT", &kSat},   {L"STL", &kStl}};

constexpr std::wstring_view kExportSuffixes[] = {L".step", L".stp", L".igs", L".iges", L".sat", L".stl"};

bool IsFileNameCharacter(wchar_t c) {
  return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') || c == L'_' ||
         c == L'-';
}

// Reads the string whose opening quote stands at `position` and moves `position` behind its closing one.
bool ReadLiteralString(std::wstring_view text, std::size_t& position, std::wstring& value) {
  value.clear();
  for (++position; position < text.size(); ++position) {
    if (text[position] == L'"') {
      ++position;
      return true;
    }
    if (text[position] == L'\\' && position + 1 < text.size()) ++position;
    value += text[position];
  }
  return false;
}

}  // namespace

const ExportFormat* FindExportFormat(std::wstring_view text) {
  const std::wstring wanted = ToUpper(Trim(text));
  for (const auto& [word, format] : kFormatWords)
    if (word == wanted) return format;
  return nullptr;
}

std::wstring WithoutExportSuffix(std::wstring_view path) {
  const std::wstring lowered = ToLower(path);
  for (const std::wstring_view suffix : kExportSuffixes)
    if (lowered.ends_with(suffix)) return std::wstring(path.substr(0, path.size() - suffix.size()));
  return std::wstring(path);
}

std::wstring DirectoryOf(std::wstring_view path) {
  const auto separator = path.find_last_of(L"\\/");
  return separator == std::wstring_view::npos ? std::wstring() : std::wstring(path.substr(0, separator));
}

std::wstring AlreadyExists(const std::wstring& path) {
  return Format(L"File already exists: '%s'. Choose another path (overwrite is not allowed).", path);
}

std::wstring SanitizeExportName(std::wstring_view text) {
  std::wstring name;
  for (const wchar_t c : text) {
    if (IsFileNameCharacter(c)) name += c;
    if (c == L' ') name += L'_';
  }
  return name.empty() ? L"export" : name;
}

bool ReadStringList(std::wstring_view arguments, std::wstring_view key, std::vector<std::wstring>& list) {
  list.clear();
  const std::wstring raw = JsonReadRaw(arguments, key);
  std::wstring_view array = Trim(raw);
  if (array.size() < 2 || array.front() != L'[' || array.back() != L']') return false;
  array = array.substr(1, array.size() - 2);

  for (std::size_t position = 0; position < array.size();) {
    if (array[position] == L',' || IsBlank(array[position])) {
      ++position;
      continue;
    }
    std::wstring value;
    if (array[position] != L'"' || !ReadLiteralString(array, position, value)) return false;
    list.push_back(std::move(value));
  }
  return true;
}

}  // namespace vek::exchange

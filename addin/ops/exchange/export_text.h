// What exports read out of a request, without the host: formats, file names, lists. All are pure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vek::exchange {

// Which of the host's two writers makes a format.
enum class ExportWriter { kSolid, kSlice };

struct ExportFormat {
  const wchar_t* name;
  const wchar_t* extension;
  const wchar_t* alternate_extension;
  ExportWriter writer;
  int creo_type;   // the solid writer's number of the format
  int slice_type;  // the slice writer's, or -1
};

// The format that a client's text means, blanks and case aside; STEP for an empty one. Null for any other.
const ExportFormat* FindExportFormat(std::wstring_view text);

// `path` without the suffix of an exchange file, if it has one: the solid writer adds its own.
std::wstring WithoutExportSuffix(std::wstring_view path);

// `path` up to its last separator, without it; empty when it has none.
std::wstring DirectoryOf(std::wstring_view path);

// What a client is told of a path where something stands already.
std::wstring AlreadyExists(const std::wstring& path);

// A file name of ASCII letters, digits, "_" and "-": a blank becomes "_", all else is dropped. "export" when
// nothing remains.
std::wstring SanitizeExportName(std::wstring_view text);

// The strings of the array under `key`. Stricter than JsonReadStringArray: false for anything but an array of
// strings. A backslash takes the character behind it as it is.
bool ReadStringList(std::wstring_view arguments, std::wstring_view key, std::vector<std::wstring>& list);

}  // namespace vek::exchange

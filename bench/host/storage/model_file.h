// Versioned files: which there are of a name, and writing the next one without harm to those.
#pragma once

#include <ProMdl.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

struct FileVersion {
  std::wstring path;
  int version = 0;  // 0 for a file without one
};

// The files of that name (without regard to case) and type in a directory, the highest version last. A
// directory that can't be read has none.
std::vector<FileVersion> VersionsOf(const std::wstring& directory, std::wstring_view name, ProMdlType type);

// Writes `text` as the version behind the highest. On failure nothing has changed, a complaint says why, and
// the result is false.
bool WriteNextVersion(const std::wstring& directory, std::wstring_view name, ProMdlType type,
                      const std::string& text);

// The whole file; nothing when it can't be read.
std::optional<std::string> ReadWholeFile(const std::wstring& path);

bool FileExists(const std::wstring& path);
bool DirectoryExists(const std::wstring& path);
std::wstring WorkingDirectory();

}  // namespace bench

#include "bench/host/storage/model_file.h"

#include <windows.h>

#include <algorithm>

#include "bench/host/storage/file_names.h"
#include "bench/host/storage/whole_file.h"
#include "bench/host/text.h"

namespace bench {
namespace {

std::wstring Join(const std::wstring& directory, const std::wstring& file) {
  const bool has_separator = directory.ends_with(L'\\') || directory.ends_with(L'/');
  return directory + (has_separator || directory.empty() ? L"" : L"\\") + file;
}

}  // namespace

std::vector<FileVersion> VersionsOf(const std::wstring& directory, std::wstring_view name, ProMdlType type) {
  std::vector<FileVersion> versions;
  const std::wstring wanted = std::wstring(name) + L"." + ExtensionOf(type);
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW(Join(directory, wanted + L"*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return versions;
  do {
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) continue;
    const std::wstring_view file = found.cFileName;
    const auto parts = ParseFileName(file);
    if (!parts || !EqualsIgnoringCase(parts->name + L"." + parts->extension, wanted)) continue;
    versions.push_back({Join(directory, std::wstring(file)), std::max(parts->version, 0)});
  } while (FindNextFileW(search, &found));
  FindClose(search);
  std::ranges::sort(versions, {}, &FileVersion::version);
  return versions;
}

bool WriteNextVersion(const std::wstring& directory, std::wstring_view name, ProMdlType type,
                      const std::string& text) {
  const auto versions = VersionsOf(directory, name, type);
  const int next = versions.empty() ? 1 : versions.back().version + 1;
  const std::wstring file = Lower(name) + L"." + ExtensionOf(type) + L"." + std::to_wstring(next);
  return WriteWholeFile(Join(directory, file), text);
}

std::optional<std::string> ReadWholeFile(const std::wstring& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return std::nullopt;
  std::string text;
  char part[1 << 14];
  DWORD read = 0;
  bool sound = true;
  while ((sound = ReadFile(file, part, sizeof part, &read, nullptr)) && read > 0) text.append(part, read);
  CloseHandle(file);
  if (!sound) return std::nullopt;
  return text;
}

bool FileExists(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool DirectoryExists(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::wstring WorkingDirectory() {
  std::wstring directory(GetCurrentDirectoryW(0, nullptr), L'\0');
  directory.resize(GetCurrentDirectoryW(static_cast<DWORD>(directory.size()), directory.data()));
  return directory;
}

}  // namespace bench

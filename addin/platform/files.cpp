#include "addin/platform/files.h"

#include <windows.h>

#include <shlobj.h>

namespace vek {

bool PathExists(const std::wstring& path) {
  return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool FileExists(const std::wstring& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool EnsureDirectory(const std::wstring& directory) {
  if (PathExists(directory)) return true;
  // Someone else may make the same directory at the same moment.
  const int result = ::SHCreateDirectoryExW(nullptr, directory.c_str(), nullptr);
  return result == ERROR_SUCCESS || result == ERROR_ALREADY_EXISTS || result == ERROR_FILE_EXISTS;
}

unsigned TickCount() {
  return ::GetTickCount();
}

}  // namespace vek

#include "addin/platform/temporary_file.h"

#include <windows.h>

#include "addin/platform/files.h"

namespace vek {

bool TemporaryDirectory(std::wstring& directory) {
  wchar_t buffer[MAX_PATH + 1] = {};
  const DWORD length = ::GetTempPathW(MAX_PATH, buffer);
  if (length == 0 || length >= MAX_PATH) return false;
  directory.assign(buffer, length);
  return true;
}

bool NewTemporaryPath(std::wstring& path_without_extension) {
  std::wstring directory;
  if (!TemporaryDirectory(directory)) return false;
  wchar_t buffer[MAX_PATH] = {};
  if (::GetTempFileNameW(directory.c_str(), L"vek", 0, buffer) == 0) return false;
  // The name is reserved by a file of the system's own extension, which is not the one that is wanted.
  path_without_extension = buffer;
  DeleteFileAt(path_without_extension);
  path_without_extension.erase(path_without_extension.rfind(L'.'));
  return true;
}

TemporaryFile::TemporaryFile(std::wstring path) : path_(std::move(path)) {}

TemporaryFile::~TemporaryFile() {
  DeleteFileAt(path_);
}

}  // namespace vek

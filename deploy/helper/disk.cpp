#include "deploy/helper/disk.h"

#include <windows.h>

#include <vector>

#include "addin/platform/files.h"

namespace vek::helper {

std::wstring FileIn(const std::wstring& folder, const std::wstring& name) {
  return folder + L"\\" + name;
}

std::optional<std::uint64_t> FileSize(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (!::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
  if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return std::nullopt;
  return (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

unsigned long MoveFileTo(const std::wstring& from, const std::wstring& to) {
  return ::MoveFileExW(from.c_str(), to.c_str(), 0) ? 0 : ::GetLastError();
}

void RemoveFolder(const std::wstring& folder) {
  std::vector<std::wstring> names;
  FilesMatching(FileIn(folder, L"*"), names);
  for (const std::wstring& name : names) DeleteFileAt(FileIn(folder, name));
  ::RemoveDirectoryW(folder.c_str());
}

}  // namespace vek::helper

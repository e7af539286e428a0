#include "addin/platform/files.h"

#include <windows.h>

#include <shlobj.h>

#include "addin/platform/owned_handle.h"

namespace vek {
namespace {

// Whether the file lets itself be written to, and nobody else has it open.
bool IsFree(const std::wstring& path) {
  const OwnedHandle file(
      ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  return static_cast<bool>(file);
}

}  // namespace

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

bool FilesMatching(const std::wstring& pattern, std::vector<std::wstring>& names) {
  names.clear();
  WIN32_FIND_DATAW entry;
  const HANDLE search = ::FindFirstFileW(pattern.c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return false;
  do {
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.emplace_back(entry.cFileName);
  } while (::FindNextFileW(search, &entry));
  ::FindClose(search);
  return true;
}

bool FullPath(const std::wstring& path, std::wstring& full) {
  wchar_t buffer[MAX_PATH];
  const DWORD length = ::GetFullPathNameW(path.c_str(), MAX_PATH, buffer, nullptr);
  if (length == 0 || length >= MAX_PATH) return false;
  full.assign(buffer, length);
  return true;
}

unsigned long DeleteFileAt(const std::wstring& path) {
  return ::DeleteFileW(path.c_str()) ? 0 : ::GetLastError();
}

std::wstring LocalApplicationData() {
  wchar_t path[MAX_PATH] = {};
  if (::SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, path) != S_OK) return {};
  return path;
}

bool ReadWholeFile(const std::wstring& path, std::string& bytes) {
  bytes.clear();
  const OwnedHandle file(::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  char part[4096];
  for (DWORD count = 0;;) {
    if (!::ReadFile(file.get(), part, sizeof part, &count, nullptr)) return false;
    if (count == 0) return true;
    bytes.append(part, count);
  }
}

bool WriteWholeFile(const std::wstring& path, const std::string& bytes) {
  const OwnedHandle file(
      ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  DWORD written = 0;
  return ::WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
         written == bytes.size();
}

bool ReplaceWholeFile(const std::wstring& path, const std::string& bytes) {
  // The move would also take the place of a file that others read.
  if (PathExists(path) && !IsFree(path)) return false;
  const std::size_t separator = path.find_last_of(L"\\/");
  const std::wstring directory = separator == std::wstring::npos ? L"." : path.substr(0, separator + 1);
  wchar_t beside[MAX_PATH] = {};
  if (::GetTempFileNameW(directory.c_str(), L"vek", 0, beside) == 0) return false;
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (WriteWholeFile(beside, bytes) && ::MoveFileExW(beside, path.c_str(), kHow)) return true;
  DeleteFileAt(beside);
  return false;
}

std::wstring EnvironmentVariable(const std::wstring& name) {
  // With room for the terminator; another thread may set a longer value in between.
  std::wstring value;
  for (DWORD room = ::GetEnvironmentVariableW(name.c_str(), nullptr, 0); room > value.size();) {
    value.resize(room);
    room = ::GetEnvironmentVariableW(name.c_str(), value.data(), room);
    if (room < value.size()) {
      value.resize(room);
      return value;
    }
  }
  return {};
}

unsigned TickCount() {
  return ::GetTickCount();
}

}  // namespace vek

// A program that notes how it was called: it appends its command line and its working directory, in UTF-8 and
// a line each, to the file with its own path and ".noted" behind it. As long as a file with ".hold" behind it
// is there, it waits before it does so; half a minute at most.
#include <windows.h>

#include <string>

#include "addin/platform/files.h"
#include "addin/text/utf8.h"

namespace {

constexpr DWORD kLongestWaitMs = 30'000;
constexpr DWORD kLookAgainMs = 5;

std::wstring OwnPath() {
  wchar_t path[MAX_PATH] = L"";
  ::GetModuleFileNameW(nullptr, path, MAX_PATH);
  return path;
}

std::wstring WorkingDirectory() {
  wchar_t path[MAX_PATH] = L"";
  ::GetCurrentDirectoryW(MAX_PATH, path);
  return path;
}

// Another copy of the program, or the test that reads, may have the file open just now.
HANDLE OpenAlone(const std::wstring& path, DWORD start) {
  for (;;) {
    const HANDLE file = ::CreateFileW(path.c_str(), FILE_APPEND_DATA, 0, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE || ::GetTickCount() - start > kLongestWaitMs) return file;
    ::Sleep(kLookAgainMs);
  }
}

}  // namespace

int main() {
  const std::wstring path = OwnPath();
  const DWORD start = ::GetTickCount();
  while (vek::PathExists(path + L".hold")) {
    if (::GetTickCount() - start > kLongestWaitMs) return 2;
    ::Sleep(kLookAgainMs);
  }
  const std::string lines =
      vek::EncodeUtf8(std::wstring(::GetCommandLineW()) + L"\n" + WorkingDirectory() + L"\n");
  const HANDLE file = OpenAlone(path + L".noted", start);
  if (file == INVALID_HANDLE_VALUE) return 1;
  DWORD written = 0;
  ::WriteFile(file, lines.data(), static_cast<DWORD>(lines.size()), &written, nullptr);
  ::CloseHandle(file);
  return 0;
}

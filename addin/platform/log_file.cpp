#include "addin/platform/log.h"

#include <windows.h>

#include <ctime>
#include <utility>

#include "addin/platform/owned_handle.h"

namespace vek {
namespace {

constexpr int kOpenAttempts = 20;
constexpr DWORD kOpenPauseMs = 5;

// The first 24 characters of the ctime text; behind them comes its own line break.
constexpr std::size_t kTimeLength = 24;

// A handle to the file at which nobody else holds one, or INVALID_HANDLE_VALUE.
HANDLE OpenAlone(const std::wstring& path) {
  for (int attempt = 1;; ++attempt) {
    const HANDLE file = ::CreateFileW(path.c_str(), FILE_APPEND_DATA | SYNCHRONIZE, 0, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE || attempt == kOpenAttempts) return file;
    ::Sleep(kOpenPauseMs);
  }
}

std::string TimeOfDay() {
  const std::time_t now = std::time(nullptr);
  char text[26] = "";
  ::ctime_s(text, sizeof text, &now);
  return std::string(text).substr(0, kTimeLength);
}

}  // namespace

LogFile::LogFile(std::wstring path) : path_(std::move(path)) {}

void LogFile::Write(std::string_view message) const {
  const std::string line = ("[" + TimeOfDay() + "] ").append(message) + "\n";
  const OwnedHandle file(OpenAlone(path_));
  if (!file) return;
  DWORD written = 0;
  ::WriteFile(file.get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
  ::FlushFileBuffers(file.get());
}

}  // namespace vek

#include "tests/support/captured_log.h"

#include <algorithm>
#include <mutex>
#include <string_view>
#include <utility>

#include "addin/platform/log.h"

namespace vek {
namespace support {
namespace {

struct Capture {
  std::mutex mutex;
  std::vector<CapturedLine> lines;
  std::function<void()> failure;
};

// Never destroyed: objects that log from their destructors may outlive it otherwise.
Capture& TheCapture() {
  static Capture& capture = *new Capture;
  return capture;
}

void Keep(LogSide side, std::wstring text) {
  Capture& capture = TheCapture();
  const std::lock_guard lock(capture.mutex);
  if (const auto failure = std::exchange(capture.failure, nullptr)) failure();
  capture.lines.push_back({side, std::move(text)});
}

}  // namespace

void FailNextLine(std::function<void()> failure) {
  Capture& capture = TheCapture();
  const std::lock_guard lock(capture.mutex);
  capture.failure = std::move(failure);
}

std::vector<CapturedLine> CapturedLog() {
  Capture& capture = TheCapture();
  const std::lock_guard lock(capture.mutex);
  return capture.lines;
}

void ClearCapturedLog() {
  Capture& capture = TheCapture();
  const std::lock_guard lock(capture.mutex);
  capture.lines.clear();
}

int CountCaptured(const std::wstring& text) {
  const auto lines = CapturedLog();
  return static_cast<int>(
      std::count_if(lines.begin(), lines.end(), [&](const CapturedLine& line) { return line.text == text; }));
}

}  // namespace support

void WriteLog(const char* message) {
  if (!message) return;
  const std::string_view bytes = message;
  support::Keep(support::LogSide::kRaw, std::wstring(bytes.begin(), bytes.end()));
}

void LogOperation(std::wstring_view message) {
  support::Keep(support::LogSide::kOperation, std::wstring(message));
}

void LogShell(std::wstring_view message) {
  support::Keep(support::LogSide::kShell, std::wstring(message));
}

}  // namespace vek

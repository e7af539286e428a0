// The log of tests: what the code would write to its file is kept in memory. Linked in the place of the real
// log.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vek::support {

// Which function a line came through, and with it the encoding that it would have in the file.
enum class LogSide { kRaw, kOperation, kShell };

struct CapturedLine {
  LogSide side;
  std::wstring text;
};

// All lines since the last ClearCapturedLog, in the order of their arrival. Any thread.
std::vector<CapturedLine> CapturedLog();
void ClearCapturedLog();

// Calls `failure`, which throws, in the place of the next line: what writing a line does when memory is
// short.
void FailNextLine(std::function<void()> failure);

// How many of the captured lines are exactly `text`.
int CountCaptured(const std::wstring& text);

}  // namespace vek::support

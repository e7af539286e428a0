// The add-in's log: one line an event, appended to a file that is opened anew for each line.
#pragma once

#include <string>
#include <string_view>

namespace vek {

// A file that takes one line at a time. Each line is one open, write, flush and close. Opening grants no
// sharing, so the retry of a failed open (after 5 ms, 20 attempts in all) is the only mutual exclusion
// between threads, and with other processes. A line that still can't be written is lost without a trace.
class LogFile {
 public:
  explicit LogFile(std::wstring path);
  // Appends "[time] message\n"; the bytes of `message` are taken as they are.
  void Write(std::string_view message) const;

 private:
  std::wstring path_;
};

// One line, in its final encoding, to the add-in's log. A null message is ignored. Any thread.
void WriteLog(const char* message);

// The operation side of the log: UTF-8.
void LogOperation(std::wstring_view message);

// The shell, the server and the companion tools: the ANSI code page of the thread.
void LogShell(std::wstring_view message);

}  // namespace vek

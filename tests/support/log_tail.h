// What the add-in's real log has been given since a moment. The test program must hold the lock of drive D.
#pragma once

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "addin/platform/files.h"
#include "tests/support/noting_program.h"

namespace vek::support {

class LogTail {
 public:
  LogTail() {
    if (!PathExists(L"D:\\")) throw std::runtime_error("there is no drive D for the log");
    start_ = ReadBytes(kPath).size();
  }

  // The messages of the lines since then, without their times.
  std::vector<std::string> Messages() const {
    constexpr std::size_t kMessageStart = 27;  // behind "[", 24 characters of time, "] "
    std::istringstream tail(ReadBytes(kPath).substr(start_));
    std::vector<std::string> messages;
    for (std::string line; std::getline(tail, line);)
      messages.push_back(line.size() < kMessageStart ? line : line.substr(kMessageStart));
    return messages;
  }

 private:
  static constexpr const wchar_t* kPath = L"D:\\VekCreoAddin.log";
  std::size_t start_ = 0;
};

}  // namespace vek::support

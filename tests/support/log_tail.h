// What a log has been given since a moment: the add-in's real one, where the test program must hold the lock
// of drive D, or a test's own.
#pragma once

#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "addin/platform/files.h"
#include "tests/support/noting_program.h"

namespace vek::support {

class LogTail {
 public:
  explicit LogTail(std::wstring path = L"D:\\VekCreoAddin.log") : path_(std::move(path)) {
    if (!PathExists(path_.substr(0, 3))) throw std::runtime_error("there is no drive for the log");
    start_ = ReadBytes(path_).size();
  }

  // The messages of the lines since then, without their times.
  std::vector<std::string> Messages() const {
    constexpr std::size_t kMessageStart = 27;  // behind "[", 24 characters of time, "] "
    std::istringstream tail(ReadBytes(path_).substr(start_));
    std::vector<std::string> messages;
    for (std::string line; std::getline(tail, line);)
      messages.push_back(line.size() < kMessageStart ? line : line.substr(kMessageStart));
    return messages;
  }

 private:
  std::wstring path_;
  std::size_t start_ = 0;
};

}  // namespace vek::support

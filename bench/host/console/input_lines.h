// Lines of standard input, read by a thread of their own and taken by the main one.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace bench {

class InputLines {
 public:
  // Begins to read.
  InputLines();

  // The lines that have come since the last call, without their ends; UTF-8.
  std::vector<std::string> Take();
  // Whether the input has ended and all of it was taken.
  bool Ended() const;
  // Waits until there is something to take or the input ends; with a time, no longer than until then.
  void Wait(std::optional<std::chrono::steady_clock::time_point> until);

 private:
  struct Shared;
  // The reading thread may outlive this object: nothing wakes it while it waits for input.
  std::shared_ptr<Shared> shared_;
};

}  // namespace bench

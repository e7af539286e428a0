// The bench's stand-in for the companion application, running, with a folder of its own.
#pragma once

#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"

namespace vek::support {

class RunningCompanion {
 public:
  // Starts it with these lines as its answers, and waits until it listens; throws when it doesn't.
  explicit RunningCompanion(const std::string& answers = {});
  // Ends it at once.
  ~RunningCompanion();
  RunningCompanion(const RunningCompanion&) = delete;
  RunningCompanion& operator=(const RunningCompanion&) = delete;

  // What it has received, a line a request: path, a blank, body.
  std::vector<std::string> Received() const;

 private:
  ScratchFolder home_;
  void* mark_ = nullptr;
  void* process_ = nullptr;
};

}  // namespace vek::support

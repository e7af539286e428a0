// How a run of the helper ended.
#pragma once

#include <string>

#include "deploy/helper/exit_codes.h"

namespace vek::helper {

struct Outcome {
  ExitCode code = ExitCode::kDone;
  std::wstring line;  // what the log is told
};

}  // namespace vek::helper

// Runs the steps of a tool call.
#pragma once

#include <chrono>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "bridge/creo.h"

namespace vek::bridge {

// Who follows a run of steps.
struct Follower {
  // Whether the results are still wanted.
  std::function<bool()> wanted;
  // How many of all steps are done; with a fraction, which grows with the time, while some are under way.
  std::function<void(double done, const std::string& message)> progress;
};

// A result for each step, in their order. What was not posted is not run: everything behind a batch that came
// to nothing as a whole, and, with `stop_on_failure`, behind a failed step.
std::vector<StepResult> RunSteps(std::span<const Step> steps, bool stop_on_failure, Creo& creo,
                                 const Follower& follower);

}  // namespace vek::bridge

// The running Creo as the bridge sees it: something that takes a batch of operations and answers with their
// results.
#pragma once

#include <chrono>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "bridge/json.h"

namespace vek::bridge {

// The most bytes that the add-in reads of a request, head and body.
inline constexpr std::size_t kRequestLimit = 262'143;

struct Step {
  std::string operation;
  Json arguments = Json::object();
};

struct StepResult {
  enum class Outcome { kDone, kFailed, kNotRun };
  Outcome outcome = Outcome::kNotRun;
  std::string message;
  Json data;  // null where the operation gives none
};

// Called some times a second while an answer is awaited, with the time since the beginning; false ends the
// wait.
using KeepWaiting = std::function<bool(std::chrono::milliseconds waited)>;

class Creo {
 public:
  virtual ~Creo() = default;

  // Why a batch came to nothing as a whole, in `failure`, or a result for each of its steps.
  struct Answer {
    std::string failure;
    std::vector<StepResult> results;
  };

  // Runs the steps, in which no operation comes twice, in their order. An answer that is no longer awaited is
  // a failure.
  virtual Answer Post(std::span<const Step> steps, const KeepWaiting& keep_waiting) = 0;
};

}  // namespace vek::bridge

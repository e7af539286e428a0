// Runs work that may fail in every way the geometry toolkit knows.
#pragma once

#include <functional>
#include <string>

namespace bench::kernel {

// Sends the toolkit's chatter nowhere and lets it turn signals into failures. Called once, at the start.
void PrepareToolkit();

struct Outcome {
  std::string error;     // empty when the work was done
  bool crashed = false;  // by a signal: what the work had in its hands is not to be trusted
};

// Does the work. Exceptions of every kind become an error; so do the signals of a crash inside the toolkit,
// after PrepareToolkit and as far as the crash leaves the process able to go on.
Outcome Guarded(const std::function<void()>& work);

}  // namespace bench::kernel

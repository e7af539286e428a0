// Keeping exceptions out of the host's frames.
#pragma once

#include <exception>

#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek {

// Runs `work`; an exception ends it and goes to the log, which names the activity. One step's exception is no
// reason to leave out the next.
template <typename Work>
void KeepFromHost(const wchar_t* activity, Work&& work) {
  try {
    work();
  } catch (const std::exception& thrown) {
    LogShell(Format(L"ERROR: Exception while %s: %S", activity, thrown.what()));
  } catch (...) {
    LogShell(Format(L"ERROR: Unknown exception while %s", activity));
  }
}

}  // namespace vek

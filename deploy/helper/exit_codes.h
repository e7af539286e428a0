// What the helper's exit code tells. The add-in looks at none of them; an administrator's script may.
#pragma once

namespace vek::helper {

enum class ExitCode {
  kDone = 0,          // all done, or nothing to do
  kFailed = 1,        // the system refused a step; what was begun has been taken back
  kArguments = 2,     // not one of the three arguments, and nothing besides
  kBusy = 3,          // another helper is at work in this folder; nothing was done
  kRefused = 4,       // an update that is not what it says it is; nothing was installed
  kNotTakenBack = 5,  // as kFailed, but not all could be taken back; the next run goes on from there
};

}  // namespace vek::helper

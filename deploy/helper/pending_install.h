// "--install-pending": puts a staged update in place.
#pragma once

#include "deploy/helper/installation.h"
#include "deploy/helper/outcome.h"
#include "deploy/helper/version.h"

namespace vek::helper {

// Verifies the staged files once more and gives all of them their places, or none; a file that is in place
// already stays. What stood there is put aside, which goes with files in use too, and removed as soon as
// nobody uses it. Waits for no other process: the host waits for this one.
//
// A staged update that is not what its marker says, or not newer than what is installed, is removed. One
// whose files the system refuses to move stays for another try.
Outcome InstallPending(const Installation& installation, const Version& installed);

}  // namespace vek::helper

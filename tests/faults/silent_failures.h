// The failures of which the add-in tells nobody.
#pragma once

#include "tests/faults/swept_run.h"

namespace vek::support {

bool MayBeSilent(const Failure& failure);

}  // namespace vek::support

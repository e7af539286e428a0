// Bringing all that shows an assembly up to date.
#pragma once

#include <ProObjects.h>

namespace vek {

// Repaints and refreshes windows and model tree after components were replaced; each step goes to the log.
void RefreshInterface(ProMdl assembly);

}  // namespace vek

// "--about": what the product is, which version, and under which licence.
#pragma once

#include "deploy/helper/exit_codes.h"

namespace vek::helper {

// Shows the window until the user closes it, with Enter, Escape or the mouse. Fails where no window can be
// shown.
ExitCode ShowAboutWindow();

}  // namespace vek::helper

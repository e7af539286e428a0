// Pictures of the active model's window, as a file and inside the result.
#pragma once

#include "addin/server/provider.h"

namespace vek::exchange {

// api_export_screenshot.
void RegisterScreenshotOperations(CreoMcpProvider& provider);

}  // namespace vek::exchange

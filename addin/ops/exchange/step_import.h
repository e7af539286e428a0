// Taking in a STEP file that a client sends along.
#pragma once

#include "addin/server/provider.h"

namespace vek::exchange {

// api_import_step_base64.
void RegisterStepImportOperations(CreoMcpProvider& provider);

}  // namespace vek::exchange

// Writing the active model to a neutral file: STEP, IGES, SAT or STL. Nothing is ever overwritten.
#pragma once

#include "addin/server/provider.h"

namespace vek::exchange {

// api_export_file and api_export_batch.
void RegisterExportOperations(CreoMcpProvider& provider);

}  // namespace vek::exchange

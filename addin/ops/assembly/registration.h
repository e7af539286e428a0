// The operations of the assembly family.
#pragma once

#include "addin/server/provider.h"

namespace vek::assembly {

// api_assembly_*.
void RegisterAssemblyOperations(CreoMcpProvider& provider);

}  // namespace vek::assembly

// Putting a part or a sub-assembly into the active assembly.
//
// The component's file ends up beside the assembly's, and the new occurrence gets a name at once: a client
// can reach it only by that.
#pragma once

#include "addin/server/provider.h"

namespace vek::assembly {

// api_assembly_add_component.
void RegisterAddingOperations(CreoMcpProvider& provider);

}  // namespace vek::assembly

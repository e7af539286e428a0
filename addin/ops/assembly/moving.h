// Shifting an occurrence.
#pragma once

#include <string>

#include "addin/server/operation_result.h"
#include "addin/server/provider.h"

namespace vek::assembly {

// api_assembly_move_component. A move that failed tells in its data, too, where the occurrence ended up. The
// occurrence has lost its constraints whatever comes of the move.
CreoMcpOperationResult MoveComponent(const std::wstring& arguments);

void RegisterMovingOperations(CreoMcpProvider& provider);

}  // namespace vek::assembly

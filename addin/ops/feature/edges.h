// Rounds and chamfers on the edges of the active part.
#pragma once

#include "addin/server/provider.h"

namespace vek::feature {

// Enters api_edge_fillet and api_edge_chamfer.
void RegisterEdgeOperations(CreoMcpProvider& provider);

}  // namespace vek::feature

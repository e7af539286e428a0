// The family of feature operations.
#pragma once

#include "addin/server/provider.h"

namespace vek::feature {

// Enters the family's operations, module by module.
void RegisterFeatureOperations(CreoMcpProvider& provider);

}  // namespace vek::feature

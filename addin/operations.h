// The provider with all operations.
#pragma once

#include "addin/server/provider.h"

namespace vek {

// Registers the families in their order and fills in what is missing.
CreoMcpProvider BuildProvider();

}  // namespace vek

// The operation that adds a constraint between two occurrences, or grounds or releases one.
#pragma once

#include "addin/server/provider.h"

namespace vek::assembly {

void RegisterConstraintOperations(CreoMcpProvider& provider);

}  // namespace vek::assembly

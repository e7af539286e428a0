// The operation for clients that think of a mechanism in an intermediate representation: a kind, references
// to geometry, and a parameter.
#pragma once

#include "addin/server/provider.h"

namespace vek::assembly {

void RegisterIrConstraintOperation(CreoMcpProvider& provider);

}  // namespace vek::assembly

// Fixing an occurrence where it stands.
#pragma once

#include <ProAsmcomp.h>

#include "addin/host/owned.h"
#include "addin/server/operation_result.h"

namespace vek::assembly {

// Moves `constraint` into a new array of one; from then on it is freed with the array. False when the array
// can't be made, and the constraint stays with the caller.
bool GatherConstraint(OwnedConstraint& constraint, OwnedConstraints& constraints);

// Gives the occurrence the one constraint FIX, which refers to nothing.
CreoMcpOperationResult GroundComponent(const ProAsmcomp& comp);

}  // namespace vek::assembly

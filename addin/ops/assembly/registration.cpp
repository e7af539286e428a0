#include "addin/ops/assembly/registration.h"

#include "addin/ops/assembly/adding.h"
#include "addin/ops/assembly/constraint_listing.h"
#include "addin/ops/assembly/constraints.h"
#include "addin/ops/assembly/ir_constraints.h"
#include "addin/ops/assembly/moving.h"
#include "addin/ops/assembly/occurrences.h"
#include "addin/ops/assembly/suppression.h"

namespace vek::assembly {

void RegisterAssemblyOperations(CreoMcpProvider& provider) {
  RegisterOccurrenceOperations(provider);
  RegisterAddingOperations(provider);
  RegisterMovingOperations(provider);
  RegisterConstraintOperations(provider);
  RegisterConstraintListingOperation(provider);
  RegisterSuppressionOperations(provider);
  RegisterIrConstraintOperation(provider);
}

}  // namespace vek::assembly

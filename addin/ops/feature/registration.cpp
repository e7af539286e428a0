#include "addin/ops/feature/registration.h"

#include "addin/ops/feature/extrude_revolve.h"
#include "addin/ops/feature/lifecycle.h"

namespace vek::feature {

void RegisterFeatureOperations(CreoMcpProvider& provider) {
  RegisterExtrudeRevolveOperations(provider);
  RegisterLifecycleOperations(provider);
}

}  // namespace vek::feature

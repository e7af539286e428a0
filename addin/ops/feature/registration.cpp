#include "addin/ops/feature/registration.h"

#include "addin/ops/feature/draft.h"
#include "addin/ops/feature/edges.h"
#include "addin/ops/feature/extrude_revolve.h"
#include "addin/ops/feature/geometry_mirror.h"
#include "addin/ops/feature/lifecycle.h"
#include "addin/ops/feature/patterns.h"
#include "addin/ops/feature/shell_hole_rotate.h"
#include "addin/ops/feature/sweep.h"
#include "addin/ops/feature/thread.h"

namespace vek::feature {

void RegisterFeatureOperations(CreoMcpProvider& provider) {
  RegisterExtrudeRevolveOperations(provider);
  RegisterSweepOperations(provider);
  RegisterShellHoleOperations(provider);
  RegisterThreadOperations(provider);
  RegisterLifecycleOperations(provider);
  RegisterRotateOperations(provider);
  RegisterEdgeOperations(provider);
  RegisterDraftOperations(provider);
  RegisterPatternOperations(provider);
  RegisterGeometryMirrorOperation(provider);
}

}  // namespace vek::feature

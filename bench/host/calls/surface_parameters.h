// The surfaces of callers as faces, and the steps of their parameters.
#pragma once

#include "bench/host/calls/geometry_handles.h"

namespace bench {

// The face behind a surface; a datum plane as a plane without bounds.
FaceInfo FaceOf(const LiveSurface& surface);

// What a step of 1 of a caller's parameter is in the kernel's: lengths differ with the model's unit, angles
// don't.
struct ParameterSteps {
  double u, v;
};
ParameterSteps StepsOf(const FaceInfo& face, double unit);

}  // namespace bench

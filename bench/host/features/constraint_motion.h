// What one constraint asks of the component that it holds. Lengths in millimetres, angles in degrees.
#pragma once

#include <optional>
#include <vector>

#include "bench/host/features/face_frame.h"

namespace bench {

enum class ConstraintType {
  kMate = 0,
  kMateOffset = 1,
  kAlign = 2,
  kAlignOffset = 3,
  kInsert = 4,
  kParallel = 5,
  kTangent = 7,
  kFix = 13,
  kAngle = 31,
  kPerpendicular = 34,
};

struct HeldFaces {
  ConstraintType type = ConstraintType::kMate;
  FaceFrame fixed;   // in the assembly
  FaceFrame moving;  // in the component's model
  double offset = 0;
};

// Whether the constraint has a meaning between faces of these kinds.
bool MakesSense(const HeldFaces& held);

// The place to which the constraint moves a component. `settled` are directions about which it may be turned
// at no cost to earlier constraints.
Matrix MovedByConstraint(const HeldFaces& held, const Matrix& place, const std::vector<Vector3>& settled);

}  // namespace bench

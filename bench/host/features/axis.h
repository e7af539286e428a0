// Where axes lie.
#pragma once

#include <optional>

#include "bench/host/features/feature_kind.h"

namespace bench {

// In model units; the direction is of unit length.
struct Axis {
  Vector3 origin{};
  Vector3 direction{};
};

// The axis that an element with one reference refers to; nothing for what is no axis.
std::optional<Axis> AxisReferredTo(const ElementNode& element, Model& model);

// The image of a point in a plane.
Vector3 Reflected(const Vector3& point, const PlaneFrame& plane);

}  // namespace bench

// The faces that constraints of components refer to, as planes and cylinders in space.
#pragma once

#include <optional>

#include "bench/host/model/component.h"
#include "bench/host/model/model.h"

namespace bench {

// A plane with a point and its outward normal, or a cylinder with a point on its axis. Millimetres.
struct FaceFrame {
  enum class Kind { kPlane, kCylinder };
  Kind kind = Kind::kPlane;
  Vector3 point{};
  Vector3 direction{0, 0, 1};
  double radius = 0;
  bool is_hole = false;  // of a cylinder: its outer side looks at the axis
};

// The frame in the coordinates where the item's path begins. Nothing for an item that isn't there, or is
// neither a plane nor a cylinder.
std::optional<FaceFrame> FrameOf(Model& start, const PlacedItem& item);

FaceFrame MovedBy(const Matrix& place, const FaceFrame& frame);

}  // namespace bench

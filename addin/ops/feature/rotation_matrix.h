// The matrix of a rotation about an axis anywhere in space: pure.
#pragma once

#include <array>

namespace vek::feature {

// For row vectors: the fourth row holds the translation.
struct Transform {
  double rows[4][4];
};

// Turns right-handed about `direction` through `point`, which stays where it is. The direction may have any
// length; one shorter than 1e-12 is taken as it is.
Transform RotationMatrix(const std::array<double, 3>& point, const std::array<double, 3>& direction,
                         double angle_deg);

}  // namespace vek::feature

#include "addin/ops/feature/rotation_matrix.h"

#include <cmath>

namespace vek::feature {
namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kShortestDirection = 1e-12;

}  // namespace

Transform RotationMatrix(const std::array<double, 3>& point, const std::array<double, 3>& direction,
                         double angle_deg) {
  auto [x, y, z] = direction;
  const double length = std::hypot(x, y, z);
  if (length > kShortestDirection) {
    x /= length;
    y /= length;
    z /= length;
  }
  const double angle = angle_deg * kPi / 180;
  const double c = std::cos(angle), s = std::sin(angle), t = 1 - c;
  Transform matrix = {{
      {x * x * t + c, x * y * t + s * z, x * z * t - s * y, 0},
      {x * y * t - s * z, y * y * t + c, y * z * t + s * x, 0},
      {x * z * t + s * y, y * z * t - s * x, z * z * t + c, 0},
      {0, 0, 0, 1},
  }};
  for (int column = 0; column < 3; ++column) {
    double turned = 0;
    for (int row = 0; row < 3; ++row) turned += point[row] * matrix.rows[row][column];
    matrix.rows[3][column] = point[column] - turned;
  }
  return matrix;
}

}  // namespace vek::feature

#include "addin/ops/assembly/pose_arithmetic.h"

#include <cmath>

namespace vek::assembly {
namespace {

// Sums of absolute values up to this count as zero.
constexpr double kZeroLength = 1e-12;

double Size(const Translation& t) {
  return std::abs(t.x) + std::abs(t.y) + std::abs(t.z);
}

}  // namespace

Translation PoseTranslation(const Pose& pose) {
  const auto& m = pose.matrix;
  const Translation column{m[0][3], m[1][3], m[2][3]};
  const Translation row{m[3][0], m[3][1], m[3][2]};
  return Size(column) < kZeroLength && Size(row) > kZeroLength ? row : column;
}

bool PoseMatches(const Pose& pose, const Translation& target, double tolerance) {
  const Translation at = PoseTranslation(pose);
  return std::abs(at.x - target.x) <= tolerance && std::abs(at.y - target.y) <= tolerance &&
         std::abs(at.z - target.z) <= tolerance;
}

Pose TranslationInColumn(const Translation& to) {
  Pose pose;
  pose.matrix[0][3] = to.x;
  pose.matrix[1][3] = to.y;
  pose.matrix[2][3] = to.z;
  return pose;
}

Pose TranslationInRow(const Translation& to) {
  Pose pose;
  pose.matrix[3][0] = to.x;
  pose.matrix[3][1] = to.y;
  pose.matrix[3][2] = to.z;
  return pose;
}

Pose ColumnForm(const Pose& pose) {
  Pose result = TranslationInColumn(PoseTranslation(pose));
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column) result.matrix[row][column] = pose.matrix[row][column];
  return result;
}

}  // namespace vek::assembly

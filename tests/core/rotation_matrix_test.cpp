#include "addin/ops/feature/rotation_matrix.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vek::feature {
namespace {

using Point = std::array<double, 3>;

// A row vector times the matrix.
Point Moved(const Point& point, const Transform& move) {
  Point result{};
  for (int column = 0; column < 3; ++column) {
    result[column] = move.rows[3][column];
    for (int row = 0; row < 3; ++row) result[column] += point[row] * move.rows[row][column];
  }
  return result;
}

void ExpectNear(const Point& point, const Point& expected) {
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(point[i], expected[i], 1e-9) << "axis " << i;
}

TEST(RotationMatrix, TurnsRightHandedAboutTheDirection) {
  // Right-handed: about z, x goes to y; about x, y goes to z; about y, z goes to x.
  const Point origin{0, 0, 0};
  const struct {
    Point direction;
    double angle_deg;
    Point from, to;
  } cases[] = {
      {{0, 0, 1}, 90, {1, 0, 0}, {0, 1, 0}},
      {{5, 0, 0}, 90, {0, 1, 0}, {0, 0, 1}},
      {{0, 2e-12, 0}, 90, {0, 0, 1}, {1, 0, 0}},
      {{0, 0, -1}, 90, {1, 0, 0}, {0, -1, 0}},
      {{0, 0, 1}, -90, {1, 0, 0}, {0, -1, 0}},
      // A third of a turn about the diagonal takes each axis to the next one; the squares of such lengths
      // are beyond a double.
      {{1e200, 1e200, 1e200}, 120, {1, 2, 3}, {3, 1, 2}},
      // cos 30° = √3/2, sin 30° = 1/2.
      {{0, 0, 1}, 30, {2, 0, 7}, {std::sqrt(3.0), 1, 7}},
  };
  for (const auto& [direction, angle_deg, from, to] : cases)
    ExpectNear(Moved(from, RotationMatrix(origin, direction, angle_deg)), to);
}

TEST(RotationMatrix, ThePointOfTheAxisStays) {
  const Transform move = RotationMatrix({10, 20, 5}, {0, 0, 1}, 90);
  ExpectNear(Moved({10, 20, 5}, move), {10, 20, 5});
  // (1, 0) from the axis goes to (0, 1) from it.
  ExpectNear(Moved({11, 20, 0}, move), {10, 21, 0});
  // The origin is (-10, -20) from the axis and comes to (20, -10) from it.
  ExpectNear(Moved({0, 0, 0}, move), {30, 10, 0});
}

TEST(RotationMatrix, NoAngleIsTheIdentity) {
  const Transform move = RotationMatrix({3, -4, 5}, {1, 2, 3}, 0);
  for (int row = 0; row < 4; ++row)
    for (int column = 0; column < 4; ++column)
      EXPECT_NEAR(move.rows[row][column], row == column ? 1 : 0, 1e-12) << row << " " << column;
}

}  // namespace
}  // namespace vek::feature

#include "bench/host/model/rigid_place.h"

#include <algorithm>
#include <cmath>

namespace bench {
namespace {

// Callers build rotations with sines and cosines; this is far above what those lose.
constexpr double kRotationTolerance = 1e-6;

Vector3 Column(const Matrix& matrix, int column) {
  return {matrix[0][column], matrix[1][column], matrix[2][column]};
}

void SetColumn(Matrix& matrix, int column, const Vector3& value) {
  for (int row = 0; row < 3; ++row) matrix[row][column] = value[row];
}

bool IsRotation(const Matrix& matrix) {
  const Vector3 x = Column(matrix, 0), y = Column(matrix, 1), z = Column(matrix, 2);
  const double faults[] = {Length(x) - 1, Length(y) - 1, Dot(x, y), Length(Cross(x, y) - z)};
  return std::ranges::all_of(faults, [](double fault) { return std::abs(fault) <= kRotationTolerance; });
}

}  // namespace

Vector3 TranslationOf(const Matrix& place) {
  return Column(place, 3);
}

Vector3 TurnedBy(const Matrix& place, const Vector3& direction) {
  return direction[0] * Column(place, 0) + direction[1] * Column(place, 1) + direction[2] * Column(place, 2);
}

Vector3 MovedBy(const Matrix& place, const Vector3& point) {
  return TurnedBy(place, point) + TranslationOf(place);
}

Matrix Composed(const Matrix& outer, const Matrix& inner) {
  Matrix both = kNoMove;
  for (int column = 0; column < 3; ++column) SetColumn(both, column, TurnedBy(outer, Column(inner, column)));
  SetColumn(both, 3, MovedBy(outer, TranslationOf(inner)));
  return both;
}

Matrix Inverse(const Matrix& place) {
  Matrix back = kNoMove;
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column) back[row][column] = place[column][row];
  SetColumn(back, 3, -1 * TurnedBy(back, TranslationOf(place)));
  return back;
}

Matrix Scaled(const Matrix& place, double factor) {
  Matrix scaled = place;
  SetColumn(scaled, 3, factor * TranslationOf(place));
  return scaled;
}

Matrix Shifted(const Matrix& place, const Vector3& by) {
  Matrix shifted = place;
  SetColumn(shifted, 3, TranslationOf(place) + by);
  return shifted;
}

Matrix Turned(const Matrix& place, const Vector3& axis, double radians) {
  const double c = std::cos(radians), s = std::sin(radians);
  Matrix turned = place;
  for (int column = 0; column < 3; ++column) {
    const Vector3 before = Column(place, column);
    SetColumn(turned, column, c * before + s * Cross(axis, before) + (1 - c) * Dot(axis, before) * axis);
  }
  return turned;
}

std::optional<Matrix> PlaceIn(const Matrix& matrix) {
  for (const auto& row : matrix)
    if (!std::ranges::all_of(row, [](double number) { return std::isfinite(number); })) return std::nullopt;
  if (!IsRotation(matrix)) return std::nullopt;
  Matrix place = matrix;
  if (TranslationOf(place) == Vector3{0, 0, 0})
    SetColumn(place, 3, {matrix[3][0], matrix[3][1], matrix[3][2]});
  place[3] = {0, 0, 0, 1};
  return place;
}

Matrix MatrixOf(const ProMatrix matrix) {
  Matrix read{};
  for (std::size_t row = 0; row < read.size(); ++row)
    std::copy(matrix[row], matrix[row] + read[row].size(), read[row].begin());
  return read;
}

void WriteMatrix(const Matrix& matrix, ProMatrix out) {
  for (std::size_t row = 0; row < matrix.size(); ++row) std::ranges::copy(matrix[row], out[row]);
}

}  // namespace bench

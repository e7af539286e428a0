// Points and directions in space.
#pragma once

#include <array>
#include <cmath>

namespace bench {

using Vector3 = std::array<double, 3>;

inline Vector3 Cross(const Vector3& a, const Vector3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline double Dot(const Vector3& a, const Vector3& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline Vector3 operator+(const Vector3& a, const Vector3& b) {
  return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

inline Vector3 operator*(double factor, const Vector3& a) {
  return {factor * a[0], factor * a[1], factor * a[2]};
}

inline Vector3 operator-(const Vector3& a, const Vector3& b) {
  return a + -1 * b;
}

inline double Length(const Vector3& a) {
  return std::sqrt(Dot(a, a));
}

}  // namespace bench

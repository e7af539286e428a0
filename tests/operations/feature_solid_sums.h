// Solids as sums of simple pieces, worked out by hand: the numbers that extrusions and revolves are held
// against.
//
// A piece is described in the frame of a sketch plane: s and t along the sketch's axes, w along the plane's
// normal.
#pragma once

#include <algorithm>

#include "bench/host/model/topology.h"
#include "bench/host/model/vector3.h"

namespace vek::support {

using bench::Vector3;

// Volume, and volume times centre of mass.
struct SolidSum {
  double volume = 0;
  Vector3 moment{0, 0, 0};

  Vector3 Center() const { return {moment[0] / volume, moment[1] / volume, moment[2] / volume}; }
};

inline SolidSum operator+(const SolidSum& a, const SolidSum& b) {
  return {a.volume + b.volume,
          {a.moment[0] + b.moment[0], a.moment[1] + b.moment[1], a.moment[2] + b.moment[2]}};
}

inline SolidSum operator-(const SolidSum& a, const SolidSum& b) {
  return {a.volume - b.volume,
          {a.moment[0] - b.moment[0], a.moment[1] - b.moment[1], a.moment[2] - b.moment[2]}};
}

inline SolidSum BoxPiece(const Vector3& low, const Vector3& high) {
  const double volume = (high[0] - low[0]) * (high[1] - low[1]) * (high[2] - low[2]);
  SolidSum sum{volume, {}};
  for (int i = 0; i < 3; ++i) sum.moment[i] = volume * (low[i] + high[i]) / 2;
  return sum;
}

// A sketch plane of the start template in the axes of the model.
struct SketchFrame {
  const wchar_t* plane;
  Vector3 s, t, w;

  Vector3 Place(const Vector3& local) const {
    Vector3 place{};
    for (int i = 0; i < 3; ++i) place[i] = s[i] * local[0] + t[i] * local[1] + w[i] * local[2];
    return place;
  }
  bench::Box Place(const bench::Box& local) const {
    const Vector3 a = Place(local.low), b = Place(local.high);
    bench::Box box;
    for (int i = 0; i < 3; ++i) {
      box.low[i] = std::min(a[i], b[i]);
      box.high[i] = std::max(a[i], b[i]);
    }
    return box;
  }
};

// FRONT has the normal +Z and TOP +Y, both with +X to the right of the sketch; RIGHT has the normal +X and +Y
// up. What is left follows from s × t = w: up is +Y on FRONT and -Z on TOP, and right is -Z on RIGHT.
inline constexpr SketchFrame kFront{L"FRONT", {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
inline constexpr SketchFrame kTop{L"TOP", {1, 0, 0}, {0, 0, -1}, {0, 1, 0}};
inline constexpr SketchFrame kRight{L"RIGHT", {0, 0, -1}, {0, 1, 0}, {1, 0, 0}};

}  // namespace vek::support

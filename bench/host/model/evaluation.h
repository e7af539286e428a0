// Points of surfaces and edges, worked out from what the kernel told of them. Lengths in millimetres.
#pragma once

#include <optional>

#include "bench/host/model/topology.h"

namespace bench {

struct SurfacePoint {
  Vector3 point{}, du{}, dv{}, duu{}, duv{}, dvv{};
  Vector3 normal{};  // out of the material
};

// At the surface's own parameters: of a plane both lengths, of a cylinder and a cone the second, else angles.
// Nothing for a kind of surface that its frame alone doesn't tell.
std::optional<SurfacePoint> PointOnSurface(const FaceInfo& face, double u, double v);

// The derivatives are those by a parameter that runs from 0 to 1.
struct EdgePoint {
  Vector3 point{}, dt{}, dtt{};
};

// Nothing for an edge that is no line, circle or arc.
std::optional<EdgePoint> PointOnEdge(const EdgeInfo& edge, double t);

// How far a point lies from the line through `origin` along `axis`.
double DistanceFromAxis(const Vector3& point, const Vector3& origin, const Vector3& axis);

}  // namespace bench

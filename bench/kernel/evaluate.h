// Points of single faces and edges: what the requests "evaluate" and "extremes" answer under "ok".
#pragma once

#include <gp_XYZ.hxx>
#include <nlohmann/json.hpp>

#include "bench/kernel/keys.h"

namespace bench::kernel {

// {"point", "du", "dv", "duu", "duv", "dvv", "normal"} at the toolkit's own parameters of the face's surface,
// the normal out of the material. Throws Refusal for a surface whose points follow from its frame, and where
// the surface has no normal.
nlohmann::json EvaluateFace(const KeyedFace& face, double u, double v);

// {"point", "dt", "dtt"} at a parameter from 0, which is the edge's "from", to 1.
nlohmann::json EvaluateEdge(const KeyedEdge& edge, double t);

// {"low", "high"}: the points of the face that lie furthest against and along the direction, which has some
// length.
nlohmann::json DescribeExtremes(const KeyedFace& face, const gp_XYZ& direction);

}  // namespace bench::kernel

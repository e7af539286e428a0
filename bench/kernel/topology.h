// The faces, edges, sketch curves and points of a part as the answer to a request tells them.
#pragma once

#include <nlohmann/json.hpp>

#include "bench/kernel/features/sketch.h"
#include "bench/kernel/keys.h"

namespace bench::kernel {

// {"faces", "edges", "outline", "mass"}: faces and edges in the order of their features and ranks, without
// the seams of closed surfaces and edges without length; outline and mass null for a body without solids.
nlohmann::json DescribeBody(const BodyKeys& keys);

// Appends one feature's curves and points.
void DescribeSketch(int feature, const SketchGeometry& drawn, nlohmann::json& curves, nlohmann::json& points);

}  // namespace bench::kernel

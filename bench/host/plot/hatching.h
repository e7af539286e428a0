// The lines by which cut material is told from what lies behind it.
#pragma once

#include "bench/host/drawing/projection.h"

namespace bench {

// Lines at 45 degrees within closed loops, of which those that lie within others are holes. Neighbouring
// bodies are told apart by the way in which the lines lean and by how close they are.
std::vector<Polyline> Hatched(const std::vector<Polyline>& loops, int body);

}  // namespace bench

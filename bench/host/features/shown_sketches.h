// Which sketches a window shows.
#pragma once

#include <vector>

#include "bench/host/model/model.h"

namespace bench {

// The ids of the active features that draw curves and points, without those of which an active feature has
// been made: their section, path or point. The copies in a pattern go with the sketch that it repeats.
std::vector<int> ShownSketches(const Model& model);

}  // namespace bench

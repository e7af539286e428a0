// A drawing's sheet as a picture.
#pragma once

#include <string>

#include "bench/host/model/model.h"

namespace bench {

// The current sheet of a drawing in SVG, in millimetres. What can't be projected is left out, after a
// complaint.
std::string PlotSheet(const Model& drawing);

}  // namespace bench

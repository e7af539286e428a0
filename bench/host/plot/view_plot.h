// One view on a sheet: its lines, hatched cuts and centre lines.
#pragma once

#include <vector>

#include "bench/host/plot/svg_writer.h"

namespace bench {

// Gives the wide lines, on the sheet. Throws NoProjection, and has drawn nothing then. Hidden lines are left
// out where the view is cut and where it shows the model from a corner.
std::vector<Polyline> DrawView(const Drawing& drawing, const DrawingView& view, SvgWriter& svg);

}  // namespace bench

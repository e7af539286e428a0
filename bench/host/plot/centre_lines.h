// The chain lines through the middles of holes and shafts.
#pragma once

#include <optional>

#include "bench/host/drawing/cross_section.h"
#include "bench/host/plot/svg_writer.h"

namespace bench {

// Draws those of the full cylinders of a view's part: a cross where one is seen along its axis, a line where
// it lies in the sheet. None of what a cut took away.
void DrawCentreLines(const Drawing& drawing, const DrawingView& view, const std::optional<CutPlane>& cut,
                     SvgWriter& svg);

}  // namespace bench

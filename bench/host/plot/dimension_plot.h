// Dimension lines around a view.
#pragma once

#include <string>
#include <vector>

#include "bench/host/plot/measured.h"
#include "bench/host/plot/svg_writer.h"

namespace bench {

// Where there is room around a view. All on the sheet.
struct DimensionRoom {
  Rectangle outline;              // the view's own
  Rectangle free;                 // which dimensions must not leave
  std::vector<Rectangle> others;  // what they must not cover: what belongs to other views,
  std::vector<Rectangle> taken;   // and what belongs to this one; what they take is added
};

// Draws what is measured as far as it finds room, and gives what is left to be told in words. Each distance
// is drawn once.
std::vector<ViewDimension> DrawDimensions(const Drawing& drawing, const DrawingView& view,
                                          const std::vector<ViewDimension>& dimensions, DimensionRoom& room,
                                          SvgWriter& svg);

bool Overlap(const Rectangle& a, const Rectangle& b);

}  // namespace bench

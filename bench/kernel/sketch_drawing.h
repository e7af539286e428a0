// Sketches in a picture: curves and points in colours of their own, hidden by what lies before them.
#pragma once

#include <cstdint>
#include <gp_Trsf.hxx>
#include <gp_XYZ.hxx>
#include <vector>

#include "bench/kernel/features/sketch.h"
#include "bench/kernel/raster.h"
#include "bench/kernel/screen_fit.h"

namespace bench::kernel {

// Curves as polylines, and points.
struct SketchLines {
  std::vector<std::vector<gp_XYZ>> curves;
  std::vector<gp_XYZ> points;
};

// The lines of one part's sketches, in the part's coordinates.
struct PartLines {
  SketchLines geometry;
  SketchLines guides;  // construction and centerlines
};

// The polylines stay within `deflection` of their curves, in mm.
PartLines LinesOf(const std::vector<SketchGeometry>& sketches, double deflection);

// How lines are drawn, in pixels.
struct SketchPen {
  std::uint32_t color = 0;  // packed
  float width = 1;
  float cross = 4;           // from a point to the ends of the cross that marks it
  double dash = 0, gap = 0;  // without a gap, lines are unbroken
};

// `scale` is how thick lines are in the picture, 1 in a window of usual size.
SketchPen GeometryPen(float scale);
SketchPen GuidePen(float scale);

// Adds the lines of a part that stands there. What is added later covers what was added before.
void Draw(const SketchLines& lines, const gp_Trsf& place, const ScreenFit& fit, const SketchPen& pen,
          ScreenDrawing& drawing);

}  // namespace bench::kernel

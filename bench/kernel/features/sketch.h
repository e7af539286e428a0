// The sketch feature: curves and points, no solid.
#pragma once

#include <TopoDS_Edge.hxx>
#include <gp_Pnt.hxx>
#include <vector>

#include "bench/kernel/recipe.h"

namespace bench::kernel {

struct SketchCurve {
  int entity = 0;
  TopoDS_Edge edge;
};

struct SketchPoint {
  int entity = 0;
  gp_Pnt at;
};

// What a sketch shows: its curves and points that are neither construction nor centerlines.
struct SketchGeometry {
  std::vector<SketchCurve> curves;
  std::vector<SketchPoint> points;
};

// Throws Refusal for a degenerate entity. A sketch needs no closed loop, and may hold nothing but
// construction.
SketchGeometry DrawSketch(const Sketch& sketch);

}  // namespace bench::kernel

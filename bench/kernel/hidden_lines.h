// What of a shape's edges and silhouettes is seen from afar, and what lies behind material.
#pragma once

#include <TopoDS_Edge.hxx>
#include <TopoDS_Shape.hxx>
#include <gp_XY.hxx>
#include <gp_XYZ.hxx>
#include <vector>

#include "bench/kernel/sight.h"

namespace bench::kernel {

using Polyline = std::vector<gp_XY>;

struct SeenLines {
  std::vector<Polyline> visible, hidden;
};

// Sharp edges and silhouettes as they come, one on another where edges lie behind each other; edges between
// faces that run smoothly into each other are left out, and so is what is seen as a point. A polyline stays
// within the tolerance of its curve. Throws Refusal.
SeenLines LinesSeen(const TopoDS_Shape& shape, const Sight& sight, double tolerance);

// Points of a curve that stay within the tolerance of it, from its first to its last.
std::vector<gp_XYZ> PointsAlong(const TopoDS_Edge& edge, double tolerance);

}  // namespace bench::kernel

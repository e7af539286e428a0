// Taking away what stands before a plane, as a section view does.
#pragma once

#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <vector>

#include "bench/kernel/hidden_lines.h"

namespace bench::kernel {

struct CuttingPlane {
  gp_XYZ origin;
  gp_XYZ normal;  // of length 1; what lies on its side is taken away
};

struct CutBody {
  TopoDS_Shape rest;               // null when nothing is left
  std::vector<TopoDS_Face> faces;  // those along which material was cut
};

// Throws Refusal.
CutBody CutAway(const TopoDS_Shape& solids, const CuttingPlane& plane);

// A cut face as it is seen.
struct SectionRegion {
  Polyline outer;  // closed without a repeated point
  std::vector<Polyline> holes;
};

SectionRegion RegionOf(const TopoDS_Face& face, const Sight& sight, double tolerance);

}  // namespace bench::kernel

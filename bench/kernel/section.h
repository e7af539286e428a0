// A section: the closed loops of a sketch and the faces that they bound.
#pragma once

#include <NCollection_DataMap.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <TopoDS_Face.hxx>
#include <gp_Ax3.hxx>
#include <vector>

#include "bench/kernel/planar_curve.h"
#include "bench/kernel/sketch_recipe.h"

namespace bench::kernel {

struct Section {
  gp_Ax3 plane;
  // One for each loop that is not a hole, with its holes; every normal is the plane's.
  std::vector<TopoDS_Face> faces;
  // The entity that each edge of the faces was made of.
  NCollection_DataMap<TopoDS_Shape, int, TopTools_ShapeMapHasher> entities;
  std::vector<PlanarCurve> curves;
};

// The curves that bound something: not construction, no points, no centerlines. Degenerate entities of every
// kind are refused.
std::vector<PlanarCurve> BoundingCurves(const std::vector<Entity>& entities);

// Throws Refusal when there is nothing to bound, a loop is open, or curves cross, touch or overlap.
Section BuildSection(const Sketch& sketch);

}  // namespace bench::kernel

// The sketch feature: curves and points, no solid.
#pragma once

#include <TopoDS_Edge.hxx>
#include <gp_Pnt.hxx>
#include <span>
#include <string>
#include <vector>

#include "bench/kernel/feature.h"

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

// The key of a sketch's point or curve: "41:point:3", "41:curve:3".
std::string SketchKey(int feature, const char* what, int entity);

// Where a point is that one of the recipes draws. Throws Refusal when none draws one of that key.
gp_Pnt SketchPointNamed(const std::string& key, std::span<const Recipe> recipes);

// A sketch needs no closed loop, and may hold nothing but construction; a degenerate entity is refused.
std::unique_ptr<const Feature> ReadSketchFeature(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

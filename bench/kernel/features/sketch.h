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

// What a sketch shows.
struct SketchGeometry {
  // What is neither construction nor a centerline: geometry of the model.
  std::vector<SketchCurve> curves;
  std::vector<SketchPoint> points;
  // Construction and centerlines, which are only looked at.
  std::vector<SketchCurve> guides;
  std::vector<SketchPoint> guide_points;

  bool IsEmpty() const { return curves.empty() && points.empty() && guides.empty() && guide_points.empty(); }
};

// The key of a sketch's point or curve: "41:point:3", "41:curve:3".
std::string SketchKey(int feature, const char* what, int entity);

// Where a point is that one of the recipes draws. Throws Refusal when none draws one of that key.
gp_Pnt SketchPointNamed(const std::string& key, std::span<const Recipe> recipes);

// A sketch needs no closed loop, and may hold nothing but construction; a degenerate entity is refused.
std::unique_ptr<const Feature> ReadSketchFeature(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

#include "bench/kernel/soundness.h"

#include <BOPAlgo_ArgumentAnalyzer.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>

#include "bench/kernel/measures.h"
#include "bench/kernel/named_shape.h"

namespace bench::kernel {

namespace {

constexpr double kLeastRadius = 1e-7;  // mm

// A cone goes on beyond its apex, turned inside out; no other check notices a face that does.
bool PassesItsApex(const TopoDS_Face& face) {
  const BRepAdaptor_Surface surface(face);
  if (surface.GetType() != GeomAbs_Cone) return false;
  const gp_Cone cone = surface.Cone();
  const auto radius = [&cone](double v) { return cone.RefRadius() + v * std::sin(cone.SemiAngle()); };
  const auto [low, high] = std::minmax(radius(surface.FirstVParameter()), radius(surface.LastVParameter()));
  return low < -kLeastRadius && high > kLeastRadius;
}

bool CrossesItself(const TopoDS_Solid& solid) {
  BOPAlgo_ArgumentAnalyzer analyzer;
  analyzer.SetShape1(solid);
  analyzer.ArgumentTypeMode() = false;
  analyzer.SelfInterMode() = true;
  analyzer.Perform();
  return analyzer.HasFaulty();
}

}  // namespace

bool IsSound(const TopoDS_Solid& solid) {
  NamedShape shape;
  shape.solids = {solid};
  if (!BRepCheck_Analyzer(solid).IsValid() || !(VolumeOf(shape) > 0)) return false;
  if (std::ranges::any_of(shape.Faces(), PassesItsApex)) return false;
  return !CrossesItself(solid);
}

}  // namespace bench::kernel

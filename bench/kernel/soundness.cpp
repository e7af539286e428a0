#include "bench/kernel/soundness.h"

#include <BOPAlgo_ArgumentAnalyzer.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepBndLib.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRep_Builder.hxx>
#include <Bnd_Box.hxx>
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
  const auto [low, high] = std::minmax({radius(surface.FirstVParameter()), radius(surface.LastVParameter())});
  return low < -kLeastRadius && high > kLeastRadius;
}

Bnd_Box BoxAround(const TopoDS_Face& face) {
  Bnd_Box box;
  BRepBndLib::Add(face, box);
  return box;
}

// The faces that are not old, with those of the old ones that come near them.
TopoDS_Compound InDoubt(const std::vector<TopoDS_Face>& faces,
                        const std::function<bool(const TopoDS_Face&)>& is_old) {
  BRep_Builder builder;
  TopoDS_Compound in_doubt;
  builder.MakeCompound(in_doubt);
  std::vector<Bnd_Box> fresh;
  for (const TopoDS_Face& face : faces) {
    if (is_old(face)) continue;
    fresh.push_back(BoxAround(face));
    builder.Add(in_doubt, face);
  }
  for (const TopoDS_Face& face : faces) {
    if (!is_old(face)) continue;
    const Bnd_Box box = BoxAround(face);
    if (std::ranges::any_of(fresh, [&box](const Bnd_Box& each) { return !each.IsOut(box); }))
      builder.Add(in_doubt, face);
  }
  return in_doubt;
}

bool CrossesItself(const TopoDS_Compound& faces) {
  BOPAlgo_ArgumentAnalyzer analyzer;
  analyzer.SetShape1(faces);
  analyzer.ArgumentTypeMode() = false;
  analyzer.SelfInterMode() = true;
  analyzer.Perform();
  return analyzer.HasFaulty();
}

}  // namespace

bool IsSound(const TopoDS_Solid& solid, const std::function<bool(const TopoDS_Face&)>& is_old) {
  NamedShape shape;
  shape.solids = {solid};
  if (!BRepCheck_Analyzer(solid).IsValid() || !(VolumeOf(shape) > 0)) return false;
  const std::vector<TopoDS_Face> faces = shape.Faces();
  if (std::ranges::any_of(faces, PassesItsApex)) return false;
  return !CrossesItself(InDoubt(faces, is_old));
}

}  // namespace bench::kernel

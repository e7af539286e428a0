#include "bench/kernel/features/solidify.h"

#include <BOPAlgo_MakerVolume.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRep_Builder.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <utility>

#include "bench/kernel/boolean.h"
#include "bench/kernel/features/body.h"
#include "bench/kernel/measures.h"
#include "bench/kernel/quilt.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

namespace {

// What a quilt's face is called as one of the body: it keeps its text, and belongs to the feature that makes
// it solid.
FaceName Solidified(const FaceName& name, const FeaturePlace& place) {
  return {place, name.rank, name.text};
}

NamedShape InsideOfClosed(const Quilt& quilt, const FeaturePlace& place) {
  TopoDS_Shell shell;
  TopoDS_Solid solid;
  BRep_Builder builder;
  builder.MakeShell(shell);
  builder.MakeSolid(solid);
  NamedShape inside;
  for (const TopoDS_Shape& face : Distinct(quilt.faces, TopAbs_FACE)) {
    builder.Add(shell, face);
    inside.names.Bind(face, Solidified(quilt.names.Find(face), place));
  }
  shell.Closed(true);
  builder.Add(solid, shell);
  inside.solids.push_back(solid);
  if (VolumeOf(inside) < 0) inside.solids.front().Reverse();
  return inside;
}

// All rooms that quilt and body bound together. Their faces are named after those that they are part of.
class Rooms {
 public:
  Rooms(const Quilt& quilt, const NamedShape& body, const FeaturePlace& place) {
    TopTools_ListOfShape bounds;
    for (const TopoDS_Solid& solid : body.solids) bounds.Append(solid);
    for (const TopoDS_Shape& face : Distinct(quilt.faces, TopAbs_FACE)) bounds.Append(face);
    maker_.SetArguments(bounds);
    maker_.SetIntersect(true);
    maker_.SetAvoidInternalShapes(true);
    maker_.SetNonDestructive(true);
    maker_.Perform();
    if (maker_.HasErrors()) throw Refusal("Quilt and body can't be brought together.");
    all_.solids = SolidsIn(maker_.Shape());
    for (const TopoDS_Shape& face : Distinct(quilt.faces, TopAbs_FACE))
      Name(face, Solidified(quilt.names.Find(face), place), true);
    for (const TopoDS_Face& face : body.Faces()) Name(face, body.names.Find(face), false);
  }

  // Those outside the body that the quilt bounds.
  NamedShape Outside(const NamedShape& body) const {
    NamedShape outside = all_;
    std::erase_if(outside.solids, [&](const TopoDS_Solid& room) {
      NamedShape alone = all_;
      alone.solids = {room};
      const std::vector<TopoDS_Face> faces = alone.Faces();
      const bool bounded = std::any_of(faces.begin(), faces.end(),
                                       [&](const TopoDS_Face& face) { return of_quilt_.Contains(face); });
      return !bounded || !Boolean(BooleanKind::kCommon, alone, body).Result().IsEmpty();
    });
    return outside;
  }

 private:
  void Name(const TopoDS_Shape& source, const FaceName& name, bool of_quilt) {
    TopTools_ListOfShape parts = maker_.Modified(source);
    if (parts.IsEmpty() && !maker_.IsDeleted(source)) parts.Append(source);
    for (const TopoDS_Shape& part : parts) {
      const FaceName* rival = all_.names.Seek(part);
      if (!rival || name < *rival) all_.names.Bind(part, name);
      if (of_quilt) of_quilt_.Add(part);
    }
  }

  BOPAlgo_MakerVolume maker_;
  NamedShape all_;
  TopTools_IndexedMapOfShape of_quilt_;
};

NamedShape Inside(const Quilt& quilt, const NamedShape& body, const FeaturePlace& place) {
  if (IsClosed(quilt)) return InsideOfClosed(quilt, place);
  if (body.IsEmpty()) throw Refusal("The quilt is open, and there is no body to close it.");
  const NamedShape inside = Rooms(quilt, body, place).Outside(body);
  if (inside.IsEmpty()) throw Refusal("The quilt is open, and the body doesn't close it.");
  return inside;
}

class SolidifyFeature : public Feature {
 public:
  explicit SolidifyFeature(std::string quilt) : quilt_(std::move(quilt)) {}

  void Build(const FeaturePlace& place, const Before&, Stage& stage) const override {
    const NamedShape inside = Inside(FindQuilt(stage.quilts, quilt_), stage.body, place);
    if (!BRepCheck_Analyzer(inside.Compound()).IsValid() || !(VolumeOf(inside) > 0))
      throw Refusal("The quilt bounds no valid solid.");
    NamedShape joined = Join(stage.body, inside);
    if (!HasChanged(stage.body, joined, place)) throw Refusal("The quilt adds nothing to the body.");
    stage.body = std::move(joined);
    std::erase_if(stage.quilts, [&](const Quilt& quilt) { return KeyOf(quilt) == quilt_; });
  }

 private:
  std::string quilt_;
};

}  // namespace

std::unique_ptr<const Feature> ReadSolidify(const Fields& fields, const std::string&) {
  return std::make_unique<SolidifyFeature>(fields.Text("quilt"));
}

}  // namespace bench::kernel

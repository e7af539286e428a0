#include "bench/kernel/named_shape.h"

#include <BRepCheck_Analyzer.hxx>
#include <BRepTools_History.hxx>
#include <BRep_Builder.hxx>
#include <ShapeUpgrade_UnifySameDomain.hxx>
#include <Standard_Failure.hxx>
#include <Standard_ProgramError.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <tuple>

namespace bench::kernel {

bool operator<(const FaceName& a, const FaceName& b) {
  return std::tie(a.place.age, a.place.copy, a.rank) < std::tie(b.place.age, b.place.copy, b.rank);
}

std::string WordOf(const FeaturePlace& place) {
  return place.word.empty() ? std::to_string(place.feature) : place.word;
}

FaceName OwnName(const FeaturePlace& place, int rank, const std::string& what) {
  return {place, rank, WordOf(place) + ":" + what};
}

FaceName StartName(const FeaturePlace& place) {
  return OwnName(place, kStartRank, "start");
}

FaceName EndName(const FeaturePlace& place) {
  return OwnName(place, kEndRank, "end");
}

FaceName SideName(const FeaturePlace& place, int entity) {
  return OwnName(place, kSideRank + entity, "side:" + std::to_string(entity));
}

std::vector<TopoDS_Shape> Distinct(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind) {
  TopTools_IndexedMapOfShape found;
  TopExp::MapShapes(shape, kind, found);
  std::vector<TopoDS_Shape> shapes;
  for (int i = 1; i <= found.Extent(); ++i) shapes.push_back(found(i));
  return shapes;
}

std::vector<TopoDS_Solid> SolidsIn(const TopoDS_Shape& shape) {
  std::vector<TopoDS_Solid> solids;
  for (const TopoDS_Shape& solid : Distinct(shape, TopAbs_SOLID)) solids.push_back(TopoDS::Solid(solid));
  return solids;
}

TopoDS_Compound NamedShape::Compound() const {
  BRep_Builder builder;
  TopoDS_Compound compound;
  builder.MakeCompound(compound);
  for (const TopoDS_Solid& solid : solids) builder.Add(compound, solid);
  return compound;
}

std::vector<TopoDS_Face> NamedShape::Faces() const {
  std::vector<TopoDS_Face> faces;
  for (const TopoDS_Shape& face : Distinct(Compound(), TopAbs_FACE)) faces.push_back(TopoDS::Face(face));
  return faces;
}

std::vector<TopoDS_Face> NamedShape::FacesNamed(const FaceName& name) const {
  std::vector<TopoDS_Face> faces;
  for (const TopoDS_Face& face : Faces()) {
    if (names.Find(face).text == name.text) faces.push_back(face);
  }
  return faces;
}

NamedShape CarryNames(const std::vector<const NamedShape*>& sources, const Descent& descent,
                      const TopoDS_Shape& shape) {
  NamedShape result;
  result.solids = SolidsIn(shape);
  if (!sources.empty()) result.motion = sources.front()->motion;
  FaceNames inherited;
  for (const NamedShape* source : sources) {
    for (const TopoDS_Face& face : source->Faces()) {
      const FaceName& name = source->names.Find(face);
      for (const TopoDS_Face& descendant : descent(face)) {
        const FaceName* rival = inherited.Seek(descendant);
        if (!rival || name < *rival) inherited.Bind(descendant, name);
      }
    }
  }
  for (const TopoDS_Face& face : result.Faces()) {
    const FaceName* name = inherited.Seek(face);
    if (!name) throw Standard_ProgramError("a face came of no face");
    result.names.Bind(face, *name);
  }
  return result;
}

NamedShape Unified(const NamedShape& shape) {
  constexpr bool kEdges = true, kFaces = true, kSplines = false;
  ShapeUpgrade_UnifySameDomain unify(shape.Compound(), kEdges, kFaces, kSplines);
  // Where the merging fails, as on some cut tori, the faces stay apart: the solids are the same all the same.
  try {
    unify.Build();
  } catch (const Standard_Failure&) {
    return shape;
  }
  const Handle(BRepTools_History) history = unify.History();
  if (!history->HasModified() && !history->HasRemoved()) return shape;
  if (!BRepCheck_Analyzer(unify.Shape()).IsValid()) return shape;
  const Descent descent = [&history](const TopoDS_Face& face) {
    std::vector<TopoDS_Face> faces;
    for (const TopoDS_Shape& modified : history->Modified(face)) faces.push_back(TopoDS::Face(modified));
    if (faces.empty() && !history->IsRemoved(face)) faces.push_back(face);
    return faces;
  };
  return CarryNames({&shape}, descent, unify.Shape());
}

}  // namespace bench::kernel

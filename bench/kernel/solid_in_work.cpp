#include "bench/kernel/solid_in_work.h"

#include <Standard_ProgramError.hxx>
#include <TopoDS.hxx>

#include "bench/kernel/soundness.h"

namespace bench::kernel {

namespace {

constexpr bool kOwnCurves = false;  // they are never written into

}  // namespace

SolidInWork::SolidInWork(const TopoDS_Solid& solid, const BodyKeys& keys)
    : copier_(solid, kOwnCurves), copy_(TopoDS::Solid(copier_.Shape())) {
  for (const TopoDS_Shape& face : Distinct(solid, TopAbs_FACE)) own_.Add(face);
  for (const KeyedFace& face : keys.faces())
    if (Has(face)) face_of_.Bind(CopyOf(face), &face);
  for (const KeyedEdge& edge : keys.edges())
    if (Has(edge)) edge_of_.Bind(CopyOf(edge), &edge);
}

TopoDS_Edge SolidInWork::CopyOf(const KeyedEdge& edge) const {
  return TopoDS::Edge(copier_.ModifiedShape(edge.edge));
}

TopoDS_Face SolidInWork::CopyOf(const KeyedFace& face) const {
  return TopoDS::Face(copier_.ModifiedShape(face.face));
}

const KeyedEdge* SolidInWork::EdgeOf(const TopoDS_Shape& copy) const {
  const auto* found = edge_of_.Seek(copy);
  return found ? *found : nullptr;
}

const KeyedFace* SolidInWork::FaceOf(const TopoDS_Shape& copy) const {
  const auto* found = face_of_.Seek(copy);
  return found ? *found : nullptr;
}

bool SolidInWork::Finish(const TopoDS_Shape& result, const Descent& descent, const FaceNames& made,
                         NamedShape& body) const {
  NamedShape finished;
  finished.solids = SolidsIn(result);
  if (finished.solids.size() != 1) return false;
  TopTools_MapOfShape present;
  for (const TopoDS_Face& face : finished.Faces()) present.Add(face);
  for (ByCopy<KeyedFace>::Iterator old(face_of_); old.More(); old.Next()) {
    bool lives_on = false;
    for (const TopoDS_Face& face : descent(TopoDS::Face(old.Key()))) {
      if (!present.Contains(face)) continue;
      finished.names.Bind(face, old.Value()->name);
      lives_on = true;
    }
    if (!lives_on) return false;
  }
  for (const TopoDS_Face& face : finished.Faces()) {
    if (finished.names.IsBound(face)) continue;
    const FaceName* name = made.Seek(face);
    if (!name) throw Standard_ProgramError("a face came of nothing");
    finished.names.Bind(face, *name);
  }
  const auto is_old = [this](const TopoDS_Face& face) { return FaceOf(face) != nullptr; };
  if (!IsSound(finished.solids.front(), is_old)) return false;
  body.solids.push_back(finished.solids.front());
  for (FaceNames::Iterator name(finished.names); name.More(); name.Next())
    body.names.Bind(name.Key(), name.Value());
  return true;
}

void KeepSolid(const TopoDS_Solid& solid, const FaceNames& names, NamedShape& body) {
  body.solids.push_back(solid);
  for (const TopoDS_Shape& face : Distinct(solid, TopAbs_FACE)) body.names.Bind(face, names.Find(face));
}

}  // namespace bench::kernel

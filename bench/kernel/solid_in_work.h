// A copy of one of a body's solids, for the toolkit's local operations: they write into the shape that they
// are given, while the body itself stays in the cache and must not change under it.
#pragma once

#include <BRepBuilderAPI_Copy.hxx>
#include <NCollection_DataMap.hxx>
#include <TopTools_MapOfShape.hxx>
#include <TopTools_ShapeMapHasher.hxx>

#include "bench/kernel/keys.h"
#include "bench/kernel/named_shape.h"

namespace bench::kernel {

class SolidInWork {
 public:
  // `keys` are those of the body that the solid belongs to, and must outlive the copy.
  SolidInWork(const TopoDS_Solid& solid, const BodyKeys& keys);

  const TopoDS_Solid& Solid() const { return copy_; }
  bool Has(const KeyedEdge& edge) const { return own_.Contains(edge.first->face); }
  bool Has(const KeyedFace& face) const { return own_.Contains(face.face); }
  // What stands in the copy for an edge or face that the solid has.
  TopoDS_Edge CopyOf(const KeyedEdge& edge) const;
  TopoDS_Face CopyOf(const KeyedFace& face) const;
  // What an edge or face of the copy stands for; null for what has no key.
  const KeyedEdge* EdgeOf(const TopoDS_Shape& copy) const;
  const KeyedFace* FaceOf(const TopoDS_Shape& copy) const;

  // The solid that came of the copy. Its faces have the names of those that they came down from, or else the
  // names in `made`. False when it isn't one sound solid on which every face lives on.
  bool Finish(const TopoDS_Shape& result, const Descent& descent, const FaceNames& made,
              NamedShape& body) const;

 private:
  template <typename Keyed>
  using ByCopy = NCollection_DataMap<TopoDS_Shape, const Keyed*, TopTools_ShapeMapHasher>;

  mutable BRepBuilderAPI_Copy copier_;
  TopoDS_Solid copy_;
  TopTools_MapOfShape own_;  // the solid's own faces
  ByCopy<KeyedEdge> edge_of_;
  ByCopy<KeyedFace> face_of_;
};

// A solid that no work is done on goes into the new body as it is, with its faces' names.
void KeepSolid(const TopoDS_Solid& solid, const FaceNames& names, NamedShape& body);

}  // namespace bench::kernel

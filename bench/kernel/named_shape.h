// Solids whose faces carry names that last through the features that follow.
#pragma once

#include <NCollection_DataMap.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Solid.hxx>
#include <functional>
#include <string>
#include <vector>

namespace bench::kernel {

// The place of a feature in its part: the id and how many features came before it.
struct FeaturePlace {
  int feature = 0;
  int age = 0;
};

// Several faces of a shape can have one name: the parts of a face that a cut has split.
struct FaceName {
  FeaturePlace place;
  int rank = 0;      // among the names of its feature
  std::string text;  // "41:side:3"
};

bool operator<(const FaceName& a, const FaceName& b);

// The ranks of a sweep's faces; a side's is kSideRank and its entity's id.
inline constexpr int kStartRank = 0, kEndRank = 1, kSideRank = 2;

FaceName StartName(const FeaturePlace& place);
FaceName EndName(const FeaturePlace& place);
FaceName SideName(const FeaturePlace& place, int entity);

using FaceNames = NCollection_DataMap<TopoDS_Shape, FaceName, TopTools_ShapeMapHasher>;

struct NamedShape {
  std::vector<TopoDS_Solid> solids;
  FaceNames names;  // every face of the solids has one

  bool IsEmpty() const { return solids.empty(); }
  TopoDS_Compound Compound() const;
  std::vector<TopoDS_Face> Faces() const;
  // The faces of that name, by rank and feature.
  std::vector<TopoDS_Face> FacesNamed(const FaceName& name) const;
};

// The subshapes of one kind, each once.
std::vector<TopoDS_Shape> Distinct(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind);

std::vector<TopoDS_Solid> SolidsIn(const TopoDS_Shape& shape);

// What a face became: itself, other faces, or nothing.
using Descent = std::function<std::vector<TopoDS_Face>(const TopoDS_Face&)>;

// The solids of `shape` with the names that come down to their faces from `sources`. Where faces with
// different names became one, the oldest name holds.
NamedShape CarryNames(const std::vector<const NamedShape*>& sources, const Descent& descent,
                      const TopoDS_Shape& shape);

// The same solids with neighbouring faces that lie on one surface merged, as far as the toolkit can merge
// them.
NamedShape Unified(const NamedShape& shape);

}  // namespace bench::kernel

// Solids whose faces carry names that last through the features that follow.
#pragma once

#include <NCollection_DataMap.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Solid.hxx>
#include <functional>
#include <gp_Trsf.hxx>
#include <string>
#include <vector>

namespace bench::kernel {

// The place of a feature in its part: the id and how many features came before it.
struct FeaturePlace {
  int feature = 0;
  int age = 0;
  int copy = 0;        // of what a pattern makes: which of its copies, from 1 on
  std::string word{};  // with which its names begin; empty: the id
};

std::string WordOf(const FeaturePlace& place);

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
// A name of the feature's own: "41:" and `what`. The rank sets its order among the feature's names.
FaceName OwnName(const FeaturePlace& place, int rank, const std::string& what);

using FaceNames = NCollection_DataMap<TopoDS_Shape, FaceName, TopTools_ShapeMapHasher>;

struct NamedShape {
  std::vector<TopoDS_Solid> solids;
  FaceNames names;  // every face of the solids has one
  // How the whole body has been moved so far. What shares a name is numbered as if it had stayed in place, so
  // that a move leaves all keys as they are.
  gp_Trsf motion;

  bool IsEmpty() const { return solids.empty(); }
  TopoDS_Compound Compound() const;
  std::vector<TopoDS_Face> Faces() const;
  // The parts of the face of that name.
  std::vector<TopoDS_Face> FacesNamed(const FaceName& name) const;
};

// Faces that hang together and bound no material, with their names.
struct Quilt {
  FeaturePlace place;
  int number = 0;  // among the quilts of its feature, from 1 on
  TopoDS_Compound faces;
  FaceNames names;
};

// The subshapes of one kind, each once.
std::vector<TopoDS_Shape> Distinct(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind);

std::vector<TopoDS_Solid> SolidsIn(const TopoDS_Shape& shape);

// What a face became: itself, other faces, or nothing.
using Descent = std::function<std::vector<TopoDS_Face>(const TopoDS_Face&)>;

// The solids of `shape` with the names that come down to their faces from `sources`. Where faces with
// different names became one, the oldest name holds. The motion is that of the first source.
NamedShape CarryNames(const std::vector<const NamedShape*>& sources, const Descent& descent,
                      const TopoDS_Shape& shape);

// The same solids with neighbouring faces that lie on one surface merged, as far as the toolkit can merge
// them.
NamedShape Unified(const NamedShape& shape);

}  // namespace bench::kernel

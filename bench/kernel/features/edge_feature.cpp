#include "bench/kernel/features/edge_feature.h"

#include <BRepGProp.hxx>
#include <BRep_Tool.hxx>
#include <ChFi3d.hxx>
#include <GProp_GProps.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <map>
#include <set>

#include "bench/kernel/measures.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

namespace {

using Maker = BRepFilletAPI_LocalOperation;

std::vector<TopoDS_Edge> EdgesOf(const Maker& maker) {
  std::vector<TopoDS_Edge> edges;
  for (int contour = 1; contour <= maker.NbContours(); ++contour)
    for (int i = 1; i <= maker.NbEdges(contour); ++i) edges.push_back(maker.Edge(contour, i));
  return edges;
}

// Material goes at edges that stand out and comes in those that lie in a corner; a toolkit that does the
// opposite has turned something outside in.
class ExpectedChange {
 public:
  ExpectedChange(const Maker& maker, const SolidInWork& solid) {
    constexpr double kFlat = 1e-3;  // rad
    for (const TopoDS_Edge& edge : EdgesOf(maker)) {
      const KeyedEdge* keyed = solid.EdgeOf(edge);
      if (!keyed) continue;
      const auto kind =
          ChFi3d::DefineConnectType(keyed->edge, keyed->first->face, keyed->second->face, kFlat, true);
      loses_ = loses_ || kind != ChFiDS_Concave;
      gains_ = gains_ || kind != ChFiDS_Convex;
    }
  }

  bool Allows(double gained) const { return (loses_ || gained > 0) && (gains_ || gained < 0); }

 private:
  bool loses_ = false;
  bool gains_ = false;
};

double VolumeGained(const TopoDS_Solid& before, const TopoDS_Solid& after) {
  NamedShape shapes[2];
  shapes[0].solids = {before};
  shapes[1].solids = {after};
  return ChangeOfVolume(shapes[0], shapes[1]).gained;
}

// The corners of a solid at the ends of its treated edges, each named after the faces that meet there: these
// are unlike for most corners of a solid, and stay while its faces do. The toolkit crashes when it is asked
// what came of a corner, so the nearest one is taken for it.
class Corners {
 public:
  Corners(const Maker& maker, const SolidInWork& solid) {
    TopTools_IndexedDataMapOfShapeListOfShape meeting;
    TopExp::MapShapesAndUniqueAncestors(solid.Solid(), TopAbs_VERTEX, TopAbs_FACE, meeting);
    for (const TopoDS_Edge& edge : EdgesOf(maker)) {
      for (const TopoDS_Vertex& vertex : {TopExp::FirstVertex(edge), TopExp::LastVertex(edge)}) {
        if (!meeting.Contains(vertex)) continue;
        std::set<const KeyedFace*> faces;  // they lie in one array, in the order of their keys
        for (const TopoDS_Shape& face : meeting.FindFromKey(vertex)) faces.insert(solid.FaceOf(face));
        corners_.emplace(std::vector(faces.begin(), faces.end()), BRep_Tool::Pnt(vertex));
      }
    }
  }

  FaceName NameOf(const TopoDS_Shape& face, const FeaturePlace& place, int first_rank) const {
    GProp_GProps properties;
    BRepGProp::SurfaceProperties(face, properties);
    const gp_Pnt center = properties.CentreOfMass();
    const auto nearest = std::ranges::min_element(
        corners_, {}, [&](const auto& corner) { return corner.second.SquareDistance(center); });
    if (nearest == corners_.end()) return OwnName(place, first_rank, "corner");
    std::string text;
    for (const KeyedFace* each : nearest->first) text += (text.empty() ? "" : "|") + each->key;
    const int rank = first_rank + static_cast<int>(std::distance(corners_.begin(), nearest));
    return OwnName(place, rank, "corner:(" + text + ")");
  }

 private:
  std::multimap<std::vector<const KeyedFace*>, gp_Pnt> corners_;
};

void BindFaces(const TopTools_ListOfShape& shapes, const FaceName& name, FaceNames& names) {
  for (const TopoDS_Shape& shape : shapes)
    if (shape.ShapeType() == TopAbs_FACE && !names.IsBound(shape)) names.Bind(shape, name);
}

}  // namespace

EdgeFeature::EdgeFeature(const Fields& fields, std::string word)
    : word_(std::move(word)), edges_(fields.Texts("edges")), runs_on_(fields.Flag("runs_on", false)) {}

void EdgeFeature::Refuse() const {
  throw Refusal("The body has no room for the " + word_ + ".");
}

void EdgeFeature::AddAll(Maker& maker, const NamedEdges& named, const SolidInWork& solid) const {
  for (const KeyedEdge* edge : named) {
    const TopoDS_Edge copy = solid.CopyOf(*edge);
    // It may have come in with an edge that runs on into it.
    if (maker.Contour(copy) == 0) Add(maker, *edge, solid);
    if (maker.Contour(copy) == 0)
      throw Refusal("Edge " + edge->key + " can't take a " + word_ + ": its faces run into each other.");
  }
  if (runs_on_) return;
  for (const TopoDS_Edge& edge : EdgesOf(maker)) {
    const KeyedEdge* keyed = solid.EdgeOf(edge);
    if (keyed && std::ranges::find(named, keyed) == named.end())
      throw Refusal("The " + word_ + " would run on to edge " + keyed->key + ".");
  }
}

FaceNames EdgeFeature::NamesOfMade(Maker& maker, const SolidInWork& solid, const BodyKeys& keys,
                                   const FeaturePlace& place) const {
  FaceNames names;
  for (const TopoDS_Edge& edge : EdgesOf(maker)) {
    const KeyedEdge* keyed = solid.EdgeOf(edge);
    if (!keyed) continue;
    // The brackets keep a number that belongs to the edge apart from one of the new face.
    const int rank = static_cast<int>(keyed - keys.edges().data());
    BindFaces(maker.Generated(edge), OwnName(place, rank, word_ + ":(" + keyed->key + ")"), names);
  }
  const Corners corners(maker, solid);
  const int first_rank = static_cast<int>(keys.edges().size());
  for (const TopoDS_Shape& face : Distinct(maker.Shape(), TopAbs_FACE))
    if (!names.IsBound(face) && !solid.FaceOf(face))
      names.Bind(face, corners.NameOf(face, place, first_rank));
  return names;
}

void EdgeFeature::Work(const NamedEdges& named, const SolidInWork& solid, const BodyKeys& keys,
                       const FeaturePlace& place, NamedShape& body) const {
  const auto maker = Start(solid.Solid());
  AddAll(*maker, named, solid);
  const ExpectedChange change(*maker, solid);
  try {
    maker->Build();
    if (!maker->IsDone()) Refuse();
  } catch (const Standard_Failure&) {
    Refuse();
  }
  const Descent descent = [&maker](const TopoDS_Face& face) {
    std::vector<TopoDS_Face> faces;
    for (const TopoDS_Shape& modified : maker->Modified(face)) faces.push_back(TopoDS::Face(modified));
    if (faces.empty() && !maker->IsDeleted(face)) faces.push_back(face);
    return faces;
  };
  if (!solid.Finish(maker->Shape(), descent, NamesOfMade(*maker, solid, keys, place), body) ||
      !change.Allows(VolumeGained(solid.Solid(), body.solids.back())))
    Refuse();
}

void EdgeFeature::Build(const FeaturePlace& place, const Before& before, Stage& stage) const {
  const BodyKeys keys(stage.body, before.facts);
  NamedEdges named;
  for (const std::string& key : edges_) named.push_back(&keys.Edge(key));
  if (named.empty()) throw Refusal("The " + word_ + " names no edge.");
  Check(keys);

  NamedShape body;
  for (const TopoDS_Solid& solid : stage.body.solids) {
    const SolidInWork in_work(solid, keys);
    NamedEdges own;
    for (const KeyedEdge* edge : named)
      if (in_work.Has(*edge)) own.push_back(edge);
    if (own.empty())
      KeepSolid(solid, stage.body.names, body);
    else
      Work(own, in_work, keys, place, body);
  }
  stage.body = Unified(body);
}

}  // namespace bench::kernel

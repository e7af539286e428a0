#include "bench/kernel/keys.h"

#include <BRepGProp.hxx>
#include <BRep_Tool.hxx>
#include <GProp_GProps.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

// Centres in the order in which parts of one face are numbered. They are compared in whole steps, so that the
// last digits of a number do not decide.
using CenterOrder = std::array<long long, 3>;

CenterOrder OrderOf(const gp_Pnt& center) {
  constexpr double kStepsPerMillimetre = 1e5;
  return {std::llround(center.X() * kStepsPerMillimetre), std::llround(center.Y() * kStepsPerMillimetre),
          std::llround(center.Z() * kStepsPerMillimetre)};
}

std::vector<KeyedFace> KeyFaces(const NamedShape& body, FaceFactsCache& cache) {
  std::vector<KeyedFace> faces;
  for (const TopoDS_Face& face : body.Faces())
    faces.push_back({face, body.names.Find(face), FactsOnDemand(face, cache), {}});
  const gp_Trsf back = body.motion.Inverted();
  std::sort(faces.begin(), faces.end(), [&back](const KeyedFace& a, const KeyedFace& b) {
    if (a.name < b.name) return true;
    if (b.name < a.name) return false;
    const auto center = [&back](const KeyedFace& keyed) {
      return OrderOf(keyed.facts->measure.center.Transformed(back));
    };
    return center(a) < center(b);
  });
  std::map<std::string, int> count;
  for (KeyedFace& face : faces) {
    const int number = ++count[face.name.text];
    face.key = number == 1 ? face.name.text : face.name.text + "#" + std::to_string(number);
  }
  return faces;
}

CenterOrder EdgeCenter(const TopoDS_Edge& edge, const gp_Trsf& back) {
  GProp_GProps properties;
  BRepGProp::LinearProperties(edge, properties);
  return OrderOf(properties.CentreOfMass().Transformed(back));
}

using FacesByShape = NCollection_DataMap<TopoDS_Shape, const KeyedFace*>;

// The edges of one solid. Two solids that touch along an edge have it once each.
void CollectEdges(const TopoDS_Solid& solid, const FacesByShape& faces, const gp_Trsf& back,
                  std::vector<KeyedEdge>& edges) {
  TopTools_IndexedDataMapOfShapeListOfShape neighbours;
  TopExp::MapShapesAndUniqueAncestors(solid, TopAbs_EDGE, TopAbs_FACE, neighbours);
  for (int i = 1; i <= neighbours.Extent(); ++i) {
    const TopoDS_Edge edge = TopoDS::Edge(neighbours.FindKey(i));
    const TopTools_ListOfShape& sides = neighbours(i);
    if (BRep_Tool::Degenerated(edge) || sides.Extent() < 2) continue;
    KeyedEdge keyed{edge, faces.Find(sides.First()), faces.Find(sides.Last()), EdgeCenter(edge, back), {}};
    if (keyed.second < keyed.first) std::swap(keyed.first, keyed.second);
    edges.push_back(keyed);
  }
}

std::vector<KeyedEdge> KeyEdges(const NamedShape& body, const std::vector<KeyedFace>& keyed_faces) {
  FacesByShape faces;
  for (const KeyedFace& keyed : keyed_faces) faces.Bind(keyed.face, &keyed);
  std::vector<KeyedEdge> edges;
  const gp_Trsf back = body.motion.Inverted();
  for (const TopoDS_Solid& solid : body.solids) CollectEdges(solid, faces, back, edges);
  // The faces lie in one array, in the order of their keys.
  std::sort(edges.begin(), edges.end(), [](const KeyedEdge& a, const KeyedEdge& b) {
    return std::tie(a.first, a.second, a.center) < std::tie(b.first, b.second, b.center);
  });
  int number = 0;
  for (std::size_t i = 0; i < edges.size(); ++i) {
    KeyedEdge& keyed = edges[i];
    const bool again = i > 0 && edges[i - 1].first == keyed.first && edges[i - 1].second == keyed.second;
    number = again ? number + 1 : 1;
    keyed.key = keyed.first->key + "|" + keyed.second->key;
    // The bar keeps the number apart from one that belongs to the second face.
    if (number > 1) keyed.key += "|#" + std::to_string(number);
  }
  return edges;
}

template <typename Keyed>
const Keyed& Find(const std::vector<Keyed>& list, const std::string& key, const char* what) {
  const auto found =
      std::find_if(list.begin(), list.end(), [&](const Keyed& each) { return each.key == key; });
  if (found == list.end()) throw Refusal(std::string("The body has no ") + what + " " + key + ".");
  return *found;
}

}  // namespace

BodyKeys::BodyKeys(const NamedShape& body, FaceFactsCache& cache)
    : faces_(KeyFaces(body, cache)), edges_(KeyEdges(body, faces_)) {}

const KeyedFace& BodyKeys::Face(const std::string& key) const {
  return Find(faces_, key, "face");
}

const KeyedEdge& BodyKeys::Edge(const std::string& key) const {
  return Find(edges_, key, "edge");
}

}  // namespace bench::kernel

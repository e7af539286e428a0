#include "bench/kernel/topology.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepGProp.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <GProp_GProps.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <tuple>

namespace bench::kernel {

using nlohmann::json;

namespace {

// Lengths are integrated to this relative error.
constexpr double kLengthPrecision = 1e-10;

template <typename T>
json Triple(const T& value) {
  // Adding zero takes the sign off a negative one.
  return {value.X() + 0.0, value.Y() + 0.0, value.Z() + 0.0};
}

// Centres in the order in which parts of one face are numbered. They are compared in whole steps, so that the
// last digits of a number do not decide.
using CenterOrder = std::array<long long, 3>;

CenterOrder OrderOf(const gp_Pnt& center) {
  constexpr double kStepsPerMillimetre = 1e5;
  return {std::llround(center.X() * kStepsPerMillimetre), std::llround(center.Y() * kStepsPerMillimetre),
          std::llround(center.Z() * kStepsPerMillimetre)};
}

struct KeyedFace {
  TopoDS_Face face;
  FaceName name;
  std::shared_ptr<const FaceFacts> facts;
  std::string key;
};

std::vector<KeyedFace> KeyFaces(const NamedShape& body, FaceFactsCache& cache) {
  std::vector<KeyedFace> faces;
  for (const TopoDS_Face& face : body.Faces())
    faces.push_back({face, body.names.Find(face), cache.Of(face), {}});
  std::sort(faces.begin(), faces.end(), [](const KeyedFace& a, const KeyedFace& b) {
    return std::make_tuple(a.name.place.age, a.name.rank, OrderOf(a.facts->measure.center)) <
           std::make_tuple(b.name.place.age, b.name.rank, OrderOf(b.facts->measure.center));
  });
  std::map<std::string, int> count;
  for (KeyedFace& face : faces) {
    const int number = ++count[face.name.text];
    face.key = number == 1 ? face.name.text : face.name.text + "#" + std::to_string(number);
  }
  return faces;
}

json DescribeFace(const KeyedFace& keyed) {
  const FaceFacts& facts = *keyed.facts;
  const SurfaceFrame& frame = facts.frame;
  json face = {{"key", keyed.key},
               {"feature", keyed.name.place.feature},
               {"type", frame.type},
               {"area", facts.measure.area},
               {"u", {frame.u_low, frame.u_high}},
               {"v", {frame.v_low, frame.v_high}},
               {"orientation", frame.orientation},
               {"point", Triple(facts.inside.point)},
               {"normal", Triple(facts.inside.normal)},
               {"low", Triple(facts.bounds.low)},
               {"high", Triple(facts.bounds.high)}};
  if (frame.origin) face["origin"] = Triple(*frame.origin);
  if (frame.axis) face["axis"] = Triple(*frame.axis);
  if (frame.x) face["x"] = Triple(*frame.x);
  if (frame.radius) face["radius"] = *frame.radius;
  if (frame.minor_radius) face["minor_radius"] = *frame.minor_radius;
  if (frame.half_angle_deg) face["half_angle_deg"] = *frame.half_angle_deg;
  return face;
}

const char* CurveType(const BRepAdaptor_Curve& curve) {
  switch (curve.GetType()) {
    case GeomAbs_Line:
      return "line";
    case GeomAbs_Circle:
      return "circle";
    case GeomAbs_Ellipse:
      return "ellipse";
    case GeomAbs_BezierCurve:
    case GeomAbs_BSplineCurve:
      return "spline";
    default:
      return "other";
  }
}

void DescribeCurve(const TopoDS_Edge& edge, json& description) {
  const BRepAdaptor_Curve curve(edge);
  description["type"] = CurveType(curve);
  const double first = curve.FirstParameter();
  // A closed edge's ends are one point to the last digit.
  const double last = BRep_Tool::IsClosed(edge) ? first : curve.LastParameter();
  description["from"] = Triple(curve.Value(first));
  description["to"] = Triple(curve.Value(last));
  description["length"] = GCPnts_AbscissaPoint::Length(curve, kLengthPrecision);
}

struct KeyedEdge {
  TopoDS_Edge edge;
  const KeyedFace* first = nullptr;
  const KeyedFace* second = nullptr;
  CenterOrder center{};
};

CenterOrder EdgeCenter(const TopoDS_Edge& edge) {
  GProp_GProps properties;
  BRepGProp::LinearProperties(edge, properties);
  return OrderOf(properties.CentreOfMass());
}

// The edges of one solid. Two solids that touch along an edge have it once each.
void CollectEdges(const TopoDS_Solid& solid, const NCollection_DataMap<TopoDS_Shape, const KeyedFace*>& faces,
                  std::vector<KeyedEdge>& edges) {
  TopTools_IndexedDataMapOfShapeListOfShape neighbours;
  TopExp::MapShapesAndUniqueAncestors(solid, TopAbs_EDGE, TopAbs_FACE, neighbours);
  for (int i = 1; i <= neighbours.Extent(); ++i) {
    const TopoDS_Edge edge = TopoDS::Edge(neighbours.FindKey(i));
    const TopTools_ListOfShape& sides = neighbours(i);
    if (BRep_Tool::Degenerated(edge) || sides.Extent() < 2) continue;
    KeyedEdge keyed{edge, faces.Find(sides.First()), faces.Find(sides.Last()), EdgeCenter(edge)};
    if (keyed.second < keyed.first) std::swap(keyed.first, keyed.second);
    edges.push_back(keyed);
  }
}

json DescribeEdges(const NamedShape& body, const std::vector<KeyedFace>& keyed_faces) {
  NCollection_DataMap<TopoDS_Shape, const KeyedFace*> faces;
  for (const KeyedFace& keyed : keyed_faces) faces.Bind(keyed.face, &keyed);
  std::vector<KeyedEdge> edges;
  for (const TopoDS_Solid& solid : body.solids) CollectEdges(solid, faces, edges);
  // The faces lie in one array, in the order of their keys.
  std::sort(edges.begin(), edges.end(), [](const KeyedEdge& a, const KeyedEdge& b) {
    return std::tie(a.first, a.second, a.center) < std::tie(b.first, b.second, b.center);
  });
  json described = json::array();
  int number = 0;
  for (std::size_t i = 0; i < edges.size(); ++i) {
    const KeyedEdge& keyed = edges[i];
    const bool again = i > 0 && edges[i - 1].first == keyed.first && edges[i - 1].second == keyed.second;
    number = again ? number + 1 : 1;
    std::string key = keyed.first->key + "|" + keyed.second->key;
    // The bar keeps the number apart from one that belongs to the second face.
    if (number > 1) key += "|#" + std::to_string(number);
    json edge = {{"key", key},
                 {"feature", keyed.second->name.place.feature},
                 {"faces", {keyed.first->key, keyed.second->key}}};
    DescribeCurve(keyed.edge, edge);
    described.push_back(std::move(edge));
  }
  return described;
}

json DescribeOutline(const std::vector<KeyedFace>& faces) {
  if (faces.empty()) return nullptr;
  Bounds bounds;
  for (const KeyedFace& face : faces) bounds.Add(face.facts->bounds);
  return {{"low", Triple(bounds.low)}, {"high", Triple(bounds.high)}};
}

json DescribeMass(const std::vector<KeyedFace>& faces) {
  if (faces.empty()) return nullptr;
  FaceIntegrals sum{};
  for (const KeyedFace& face : faces) AddTo(sum, face.facts->integrals);
  const MassProperties mass = MassOf(sum);
  json inertia = json::array();
  for (int row = 1; row <= 3; ++row) inertia.push_back(Triple(mass.inertia.Row(row)));
  return {
      {"volume", mass.volume}, {"area", mass.area}, {"center", Triple(mass.center)}, {"inertia", inertia}};
}

std::string KeyOf(int feature, const char* what, int entity) {
  return std::to_string(feature) + ":" + what + ":" + std::to_string(entity);
}

}  // namespace

json DescribeBody(const NamedShape& body, FaceFactsCache& cache) {
  const std::vector<KeyedFace> keyed_faces = KeyFaces(body, cache);
  json faces = json::array();
  for (const KeyedFace& keyed : keyed_faces) faces.push_back(DescribeFace(keyed));
  return {{"faces", std::move(faces)},
          {"edges", DescribeEdges(body, keyed_faces)},
          {"outline", DescribeOutline(keyed_faces)},
          {"mass", DescribeMass(keyed_faces)}};
}

void DescribeSketch(int feature, const SketchGeometry& drawn, json& curves, json& points) {
  for (const SketchCurve& curve : drawn.curves) {
    json described = {
        {"key", KeyOf(feature, "curve", curve.entity)}, {"feature", feature}, {"entity", curve.entity}};
    DescribeCurve(curve.edge, described);
    curves.push_back(std::move(described));
  }
  for (const SketchPoint& point : drawn.points) {
    points.push_back({{"key", KeyOf(feature, "point", point.entity)},
                      {"feature", feature},
                      {"entity", point.entity},
                      {"at", Triple(point.at)}});
  }
}

}  // namespace bench::kernel

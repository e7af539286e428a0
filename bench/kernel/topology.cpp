#include "bench/kernel/topology.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <map>
#include <string>

#include "bench/kernel/contours.h"
#include "bench/kernel/json_vector.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

// Lengths are integrated to this relative error.
constexpr double kLengthPrecision = 1e-10;

json DescribeFace(const KeyedFace& keyed, const Contours& contours) {
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
               {"high", Triple(facts.bounds.high)},
               {"contours", contours.Of(keyed)}};
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

// About its axis a circle runs right-handed from its one end to its other.
void DescribeTurn(const BRepAdaptor_Curve& curve, json& description) {
  const gp_Circ circle = curve.Circle();
  gp_Pnt start;
  gp_Vec along;
  curve.D1(curve.FirstParameter(), start, along);
  const gp_Dir axis(gp_Vec(circle.Location(), start).Crossed(along));
  description["center"] = Triple(circle.Location());
  description["axis"] = Triple(axis);
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
  if (curve.GetType() == GeomAbs_Circle) DescribeTurn(curve, description);
}

json DescribeEdge(const KeyedEdge& keyed) {
  json edge = {{"key", keyed.key},
               {"feature", keyed.second->name.place.feature},
               {"faces", {keyed.first->key, keyed.second->key}}};
  DescribeCurve(keyed.edge, edge);
  return edge;
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

}  // namespace

json DescribeBody(const BodyKeys& keys) {
  const Contours contours(keys);
  json faces = json::array(), edges = json::array();
  for (const KeyedFace& keyed : keys.faces()) faces.push_back(DescribeFace(keyed, contours));
  for (const KeyedEdge& keyed : keys.edges()) edges.push_back(DescribeEdge(keyed));
  return {{"faces", std::move(faces)},
          {"edges", std::move(edges)},
          {"outline", DescribeOutline(keys.faces())},
          {"mass", DescribeMass(keys.faces())}};
}

void DescribeSketch(int feature, const SketchGeometry& drawn, json& curves, json& points) {
  std::map<int, int> count;  // a text has many curves
  for (const SketchCurve& curve : drawn.curves) {
    const int number = ++count[curve.entity];
    std::string key = SketchKey(feature, "curve", curve.entity);
    if (number > 1) key += "#" + std::to_string(number);
    json described = {{"key", std::move(key)}, {"feature", feature}, {"entity", curve.entity}};
    DescribeCurve(curve.edge, described);
    curves.push_back(std::move(described));
  }
  for (const SketchPoint& point : drawn.points) {
    points.push_back({{"key", SketchKey(feature, "point", point.entity)},
                      {"feature", feature},
                      {"entity", point.entity},
                      {"at", Triple(point.at)}});
  }
}

}  // namespace bench::kernel

#include "bench/host/features/topology_json.h"

#include <nlohmann/json.hpp>

#include "bench/host/host.h"
#include "bench/host/kernel_link/kernel_answer.h"

namespace bench {
namespace {

using nlohmann::json;

Vector3 ReadVector(const json& value) {
  return value.get<Vector3>();
}

// Not every surface has a frame, a radius or an angle.
void ReadIfThere(const json& from, const char* key, Vector3& vector) {
  if (const auto found = from.find(key); found != from.end() && !found->is_null())
    vector = ReadVector(*found);
}

void ReadIfThere(const json& from, const char* key, double& number) {
  if (const auto found = from.find(key); found != from.end() && !found->is_null())
    number = found->get<double>();
}

FaceInfo ReadFace(const json& from) {
  FaceInfo face;
  face.key = from.at("key").get<std::string>();
  face.feature = IntegerAt(from, "feature");
  face.type = from.at("type").get<std::string>();
  face.area = from.at("area").get<double>();
  face.orientation = IntegerAt(from, "orientation");
  from.at("u").get_to(face.u);
  from.at("v").get_to(face.v);
  ReadIfThere(from, "origin", face.origin);
  ReadIfThere(from, "axis", face.axis);
  ReadIfThere(from, "x", face.x);
  face.point = ReadVector(from.at("point"));
  face.normal = ReadVector(from.at("normal"));
  face.low = ReadVector(from.at("low"));
  face.high = ReadVector(from.at("high"));
  ReadIfThere(from, "radius", face.radius);
  ReadIfThere(from, "minor_radius", face.minor_radius);
  ReadIfThere(from, "half_angle_deg", face.half_angle_deg);
  from.at("contours").get_to(face.contours);
  return face;
}

EdgeInfo ReadEdge(const json& from) {
  EdgeInfo edge;
  edge.key = from.at("key").get<std::string>();
  edge.feature = IntegerAt(from, "feature");
  from.at("faces").get_to(edge.faces);
  edge.type = from.at("type").get<std::string>();
  edge.from = ReadVector(from.at("from"));
  edge.to = ReadVector(from.at("to"));
  edge.length = from.at("length").get<double>();
  ReadIfThere(from, "center", edge.center);
  ReadIfThere(from, "axis", edge.axis);
  return edge;
}

MassProperties ReadMass(const json& from) {
  MassProperties mass;
  mass.volume = from.at("volume").get<double>();
  mass.area = from.at("area").get<double>();
  mass.center = ReadVector(from.at("center"));
  for (int row = 0; row < 3; ++row) from.at("inertia").at(row).get_to(mass.inertia[row]);
  return mass;
}

void ReadTopology(const json& answer, Topology& topology) {
  for (const json& face : answer.at("faces")) topology.faces.push_back(ReadFace(face));
  for (const json& edge : answer.at("edges")) topology.edges.push_back(ReadEdge(edge));
  topology.bodies = IntegerAt(answer, "bodies");
  if (const json& box = answer.at("outline"); !box.is_null())
    topology.outline = Box{ReadVector(box.at("low")), ReadVector(box.at("high"))};
  if (const json& mass = answer.at("mass"); !mass.is_null()) topology.mass = ReadMass(mass);
}

void ReadItems(const json& answer, const char* list, ProType type, std::vector<Geometry::Item>& items) {
  for (const json& entry : answer.at(list))
    items.push_back({type, IntegerAt(entry, "feature"), entry.at("key").get<std::string>()});
}

}  // namespace

bool ReadGeometry(const json& answer, Geometry& geometry) {
  try {
    for (const json& feature : answer.at("features"))
      if (feature.at("status").get<std::string>() != "ok")
        geometry.refusals[IntegerAt(feature, "feature")] = feature.value("reason", "");
    ReadTopology(answer, geometry.topology);
    ReadItems(answer, "faces", PRO_SURFACE, geometry.items);
    ReadItems(answer, "edges", PRO_EDGE, geometry.items);
    ReadItems(answer, "curves", PRO_CURVE, geometry.items);
    ReadItems(answer, "points", PRO_POINT, geometry.items);
    ReadItems(answer, "quilts", PRO_QUILT, geometry.items);
    return true;
  } catch (const json::exception& exception) {
    Complain(std::string("the geometry kernel's answer can't be read: ") + exception.what());
    return false;
  }
}

}  // namespace bench

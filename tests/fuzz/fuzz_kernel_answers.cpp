// What arrives at the bench host from the geometry kernel: the answer to request 7, and of a regeneration the
// model's topology.
//
// No answer makes the readers throw. One that is taken is an object under the id that was asked; a topology
// that is taken has as many faces, edges and items as the answer, in its order and with its numbers, and one
// that isn't leaves a complaint.
#include <nlohmann/json.hpp>

#include "bench/host/features/topology_json.h"
#include "bench/host/kernel_link/kernel_answer.h"
#include "tests/fuzz/fuzz_text.h"

using nlohmann::json;
using vek::fuzz::Require;

namespace bench {

int complaints = 0;

// In the place of the host's console.
void Complain(const std::string& what) {
  Require(!what.empty());
  ++complaints;
}

}  // namespace bench

namespace {

constexpr int kAsked = 7;

void CheckFaces(const json& faces, const bench::Topology& topology) {
  Require(topology.faces.size() == faces.size());
  for (std::size_t i = 0; i < faces.size(); ++i) {
    const bench::FaceInfo& face = topology.faces[i];
    Require(face.key == faces[i]["key"] && face.type == faces[i]["type"] &&
            face.area == faces[i]["area"].get<double>());
    Require(face.u[1] == faces[i]["u"][1].get<double>() &&
            face.point[2] == faces[i]["point"][2].get<double>());
    Require(face.feature == faces[i]["feature"] && face.orientation == faces[i]["orientation"]);
    Require(face.contours.size() == faces[i]["contours"].size() && topology.Face(face.key)->key == face.key);
  }
}

void CheckEdges(const json& edges, const bench::Topology& topology) {
  Require(topology.edges.size() == edges.size());
  for (std::size_t i = 0; i < edges.size(); ++i) {
    const bench::EdgeInfo& edge = topology.edges[i];
    Require(edge.key == edges[i]["key"] && edge.faces[1] == edges[i]["faces"][1]);
    Require(edge.feature == edges[i]["feature"] && edge.length == edges[i]["length"].get<double>() &&
            topology.Edge(edge.key)->key == edge.key);
  }
}

void CheckGeometry(const json& ok) {
  bench::Geometry geometry;
  const int before = bench::complaints;
  if (!bench::ReadGeometry(ok, geometry)) return Require(bench::complaints == before + 1);
  Require(bench::complaints == before);
  CheckFaces(ok["faces"], geometry.topology);
  CheckEdges(ok["edges"], geometry.topology);
  std::size_t items = 0;
  for (const char* list : {"faces", "edges", "curves", "points", "quilts"})
    for (const json& entry : ok[list]) {
      Require(items < geometry.items.size() && geometry.items[items].key == entry["key"]);
      ++items;
    }
  Require(items == geometry.items.size() && geometry.refusals.size() <= ok["features"].size());
  Require(geometry.topology.outline.has_value() != ok["outline"].is_null());
  Require(geometry.topology.mass.has_value() != ok["mass"].is_null());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view line = vek::fuzz::Bytes(data, size);
  const bench::KernelAnswer answer = bench::ReadKernelAnswer(line, kAsked);
  if (answer.ok) {
    Require(answer.is_asked_for && answer.ok->is_object() && answer.rejection.empty());
    CheckGeometry(*answer.ok);
  } else if (answer.is_asked_for) {
    Require(!answer.rejection.empty());
  }
  // The topology alone, which is easier to come by.
  const json bare = json::parse(line, nullptr, false);
  if (bare.is_object()) CheckGeometry(bare);
  return 0;
}

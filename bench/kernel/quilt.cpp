#include "bench/kernel/quilt.h"

#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS.hxx>
#include <cmath>
#include <nlohmann/json.hpp>

#include "bench/kernel/refusal.h"

namespace bench::kernel {

using nlohmann::json;

std::string KeyOf(const Quilt& quilt) {
  return WordOf(quilt.place) + ":quilt:" + std::to_string(quilt.number);
}

const Quilt& FindQuilt(const std::vector<Quilt>& quilts, const std::string& key) {
  for (const Quilt& quilt : quilts)
    if (KeyOf(quilt) == key) return quilt;
  throw Refusal("There is no quilt " + key + ".");
}

bool IsClosed(const Quilt& quilt) {
  // A seam has its one face on both sides.
  TopTools_IndexedDataMapOfShapeListOfShape sides;
  TopExp::MapShapesAndAncestors(quilt.faces, TopAbs_EDGE, TopAbs_FACE, sides);
  for (int i = 1; i <= sides.Extent(); ++i) {
    const bool is_line = !BRep_Tool::Degenerated(TopoDS::Edge(sides.FindKey(i)));
    if (is_line && sides(i).Extent() < 2) return false;
  }
  return true;
}

json DescribeQuilts(const std::vector<Quilt>& quilts, FaceFactsCache& cache) {
  json described = json::array();
  for (const Quilt& quilt : quilts) {
    double area = 0;
    const auto faces = Distinct(quilt.faces, TopAbs_FACE);
    for (const TopoDS_Shape& face : faces) area += std::abs(cache.Of(TopoDS::Face(face))->measure.area);
    described.push_back({{"key", KeyOf(quilt)},
                         {"feature", quilt.place.feature},
                         {"faces", faces.size()},
                         {"area", area},
                         {"closed", IsClosed(quilt)}});
  }
  return described;
}

}  // namespace bench::kernel

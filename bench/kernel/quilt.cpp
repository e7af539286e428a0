#include "bench/kernel/quilt.h"

#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

#include "bench/kernel/refusal.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

// The faces that hang together by edges, one set after the other.
std::vector<TopTools_IndexedMapOfShape> ConnectedSets(const TopoDS_Shape& faces) {
  TopTools_IndexedDataMapOfShapeListOfShape neighbours;
  TopExp::MapShapesAndUniqueAncestors(faces, TopAbs_EDGE, TopAbs_FACE, neighbours);
  std::vector<TopTools_IndexedMapOfShape> sets;
  const auto known = [&](const TopoDS_Shape& face) {
    return std::any_of(sets.begin(), sets.end(), [&](const auto& set) { return set.Contains(face); });
  };
  for (const TopoDS_Shape& first : Distinct(faces, TopAbs_FACE)) {
    if (known(first)) continue;
    TopTools_IndexedMapOfShape& set = sets.emplace_back();
    set.Add(first);
    // The set grows while it is walked.
    for (int i = 1; i <= set.Extent(); ++i)
      for (const TopoDS_Shape& edge : Distinct(set(i), TopAbs_EDGE))
        for (const TopoDS_Shape& neighbour : neighbours.FindFromKey(edge)) set.Add(neighbour);
  }
  return sets;
}

}  // namespace

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

void AddQuilts(const TopoDS_Shape& faces, const FaceNames& names, const FeaturePlace& place,
               std::vector<Quilt>& quilts) {
  int number = 0;
  for (const TopTools_IndexedMapOfShape& set : ConnectedSets(faces)) {
    Quilt quilt{.place = place, .number = ++number, .faces = {}, .names = {}};
    BRep_Builder().MakeCompound(quilt.faces);
    for (int i = 1; i <= set.Extent(); ++i) {
      BRep_Builder().Add(quilt.faces, set(i));
      quilt.names.Bind(set(i), names.Find(set(i)));
    }
    quilts.push_back(std::move(quilt));
  }
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

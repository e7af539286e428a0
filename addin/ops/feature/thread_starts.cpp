#include "addin/ops/feature/thread_starts.h"

#include <algorithm>

#include "addin/host/visits.h"
#include "addin/ops/feature/edge_selection.h"

namespace vek::feature {
namespace {

constexpr int kPlane = 34;

// What counts as cylindrical: cylinder, extruded surface, fillet.
bool TakesThread(ProSrftype type) {
  const int number = static_cast<int>(type);
  return number == 36 || number == 44 || number == 48;
}

std::vector<ProEdge> EdgesOf(ProSurface surface) {
  std::vector<ProEdge> edges;
  VisitContours(surface, [&](ProContour contour, ProError) {
    VisitEdges(surface, contour, [&](ProEdge edge, ProError) {
      edges.push_back(edge);
      return PRO_TK_NO_ERROR;
    });
    return PRO_TK_NO_ERROR;
  });
  return edges;
}

bool IsPlane(ProSurface surface) {
  ProSrftype type{};
  return ProSurfaceTypeGet(surface, &type) == PRO_TK_NO_ERROR && static_cast<int>(type) == kPlane;
}

void AddOnce(const ProModelitem& item, std::vector<ProModelitem>& items) {
  const bool known = std::ranges::any_of(
      items, [&](const ProModelitem& other) { return other.type == item.type && other.id == item.id; });
  if (!known) items.push_back(item);
}

}  // namespace

ProSurface FindThreadSurface(const ProFeature& feature) {
  const std::vector<ProSurface> surfaces = FeatureSurfaces(feature);
  const auto found = std::ranges::find_if(surfaces, [](ProSurface surface) {
    ProSrftype type{};
    return ProSurfaceTypeGet(surface, &type) == PRO_TK_NO_ERROR && TakesThread(type);
  });
  return found != surfaces.end() ? *found : nullptr;
}

std::vector<ProModelitem> FindThreadStarts(ProMdl model, ProSurface surface) {
  const auto solid = static_cast<ProSolid>(model);
  const std::vector<ProEdge> edges = EdgesOf(surface);
  std::vector<ProModelitem> starts;
  ProModelitem item{};
  for (const ProEdge edge : edges) {
    ProEdge next[2] = {};
    ProSurface faces[2] = {};
    if (ProEdgeNeighborsGet(edge, &next[0], &next[1], &faces[0], &faces[1]) != PRO_TK_NO_ERROR) continue;
    for (const ProSurface face : faces) {
      if (face == nullptr || face == surface || !IsPlane(face)) continue;
      if (ProSurfaceToGeomitem(solid, face, &item) == PRO_TK_NO_ERROR) AddOnce(item, starts);
    }
  }
  for (const ProEdge edge : edges)
    if (ProEdgeToGeomitem(solid, edge, &item) == PRO_TK_NO_ERROR) AddOnce(item, starts);
  return starts;
}

}  // namespace vek::feature

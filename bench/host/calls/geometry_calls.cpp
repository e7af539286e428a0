// Surfaces, contours and edges: the ways to them, and between them and items.
#include <ProGeomitem.h>

#include <algorithm>

#include "bench/host/calls/geometry_handles.h"
#include "bench/host/calls/visit.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/handles.h"

namespace bench {
namespace {

template <typename Live>
constexpr auto IsThere = [](auto handle) {
  Live live;
  return Resolve(handle, live) == PRO_TK_NO_ERROR;
};

// The living surfaces of the solid; its datum planes bound nothing.
std::vector<ProSurface> SurfacesOf(Model& model) {
  std::vector<int> ids;
  for (const FaceInfo& face : model.topology.faces)
    if (const auto id = model.ids_of_keys.find(face.key); id != model.ids_of_keys.end())
      ids.push_back(id->second);
  std::ranges::sort(ids);
  std::vector<ProSurface> surfaces;
  for (const int id : ids) surfaces.push_back(HandleOfSurface(model, id));
  return surfaces;
}

// The item of that type that a caller's record names, in a model in session.
ProError ResolveItem(const ProGeomitem* record, ProType type, Model*& model) {
  if (!record) return PRO_TK_BAD_INPUTS;
  if (record->type != type) return PRO_TK_INVALID_TYPE;
  if (const ProError status = Resolve(record->owner, model)) return status;
  return ItemExists(*record) ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
}

// Writes the record of what stands behind a handle, which must be of that solid.
template <typename Live>
ProError WriteItem(ProSolid solid, auto handle, ProType type, ProGeomitem* item) {
  Live live;
  if (!solid || !item) return PRO_TK_BAD_INPUTS;
  if (const ProError status = Resolve(handle, live)) return status;
  if (live.model != LiveSolid(solid)) return PRO_TK_BAD_INPUTS;
  *item = {type, live.id, Handle(*live.model)};
  return PRO_TK_NO_ERROR;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProSolidSurfaceVisit(ProSolid solid, ProSurfaceAction action, ProSurfaceFilter filter,
                              ProAppData data) {
  HOST_CALL(solid) {
    Model* model = LiveSolid(solid);
    if (!model || !action) return PRO_TK_BAD_INPUTS;
    return VisitEach(SurfacesOf(*model), IsThere<LiveSurface>, action, filter, data);
  };
}

ProError ProSurfaceContourVisit(ProSurface surface, ProContourAction action, ProContourFilter filter,
                                ProAppData data) {
  HOST_CALL(surface) {
    LiveSurface live;
    if (!action) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(surface, live)) return status;
    return VisitEach(HandlesOfContours(live), IsThere<LiveContour>, action, filter, data);
  };
}

ProError ProContourEdgeVisit(ProSurface surface, ProContour contour, ProEdgeAction action,
                             ProEdgeFilter filter, ProAppData data) {
  HOST_CALL(surface, contour) {
    LiveSurface live;
    LiveContour bound;
    if (!action) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(surface, live)) return status;
    if (const ProError status = Resolve(contour, bound)) return status;
    if (bound.surface.model != live.model || bound.surface.id != live.id) return PRO_TK_BAD_INPUTS;
    std::vector<ProEdge> edges;
    for (const std::string& key : *bound.edges)
      if (const ProEdge edge = HandleOfEdge(*live.model, key)) edges.push_back(edge);
    return VisitEach(edges, IsThere<LiveEdge>, action, filter, data);
  };
}

ProError ProGeomitemToSurface(ProGeomitem* item, ProSurface* surface) {
  HOST_CALL(item) {
    Model* model = nullptr;
    if (!surface) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveItem(item, PRO_SURFACE, model)) return status;
    *surface = HandleOfSurface(*model, item->id);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSurfaceToGeomitem(ProSolid solid, ProSurface surface, ProGeomitem* item) {
  HOST_CALL(solid, surface) {
    return WriteItem<LiveSurface>(solid, surface, PRO_SURFACE, item);
  };
}

ProError ProGeomitemToEdge(ProGeomitem* item, ProEdge* edge) {
  HOST_CALL(item) {
    Model* model = nullptr;
    if (!edge) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveItem(item, PRO_EDGE, model)) return status;
    *edge = HandleOfEdge(*model, item->id);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProEdgeToGeomitem(ProSolid solid, ProEdge edge, ProGeomitem* item) {
  HOST_CALL(solid, edge) {
    return WriteItem<LiveEdge>(solid, edge, PRO_EDGE, item);
  };
}

ProError ProGeomitemIsInactive(ProGeomitem* item, ProBoolean* inactive) {
  HOST_CALL(item) {
    Model* model = nullptr;
    if (!item || !inactive) return PRO_TK_BAD_INPUTS;
    if (const ProError status = Resolve(item->owner, model)) return status;
    const GeometryItem* found = model->FindItem(item->type, item->id);
    if (!found) return PRO_TK_E_NOT_FOUND;
    const bool active = found->alive && model->OwnerOf(item->type, item->id)->status == PRO_FEAT_ACTIVE;
    *inactive = active ? PRO_B_FALSE : PRO_B_TRUE;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProGeomitemFeatureGet(ProGeomitem* item, ProFeature* feature) {
  HOST_CALL(item) {
    Model* model = nullptr;
    if (!item || !feature) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveItem(item, item->type, model)) return status;
    const Feature* owner = model->OwnerOf(item->type, item->id);
    if (!owner) return PRO_TK_BAD_INPUTS;
    *feature = {PRO_FEATURE, owner->id, Handle(*model)};
    return PRO_TK_NO_ERROR;
  };
}

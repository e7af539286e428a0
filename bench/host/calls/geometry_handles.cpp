#include "bench/host/calls/geometry_handles.h"

#include <map>
#include <tuple>

#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/opaque_handles.h"

namespace bench {
namespace {

// Where an item is to be looked up whenever its handle is used.
struct Place {
  ProMdl model;
  int id;
  int contour;  // its index, of a contour; else 0
  auto operator<=>(const Place&) const = default;
};

template <typename Handle>
class HandlesOfPlaces {
 public:
  Handle Of(const Place& place) {
    const auto [entry, is_new] = handles_.try_emplace(place, nullptr);
    if (is_new) entry->second = places_.Enter(place);
    return entry->second;
  }

  // The place that the handle was given out for; `what` names the kind in the violation of one that wasn't.
  ProError Find(Handle handle, const char* what, Place& place) {
    if (!handle) return PRO_TK_BAD_INPUTS;
    if (const Place* known = places_.Find(handle)) {
      place = *known;
      return PRO_TK_NO_ERROR;
    }
    TheHost().ledger.Violation(CurrentCall(), std::string("uses a foreign pointer as ") + what);
    return PRO_TK_INVALID_PTR;
  }

 private:
  OpaqueHandles<Handle, Place> places_;
  std::map<Place, Handle> handles_;
};

HandlesOfPlaces<ProSurface>& Surfaces() {
  static HandlesOfPlaces<ProSurface> surfaces;
  return surfaces;
}

HandlesOfPlaces<ProContour>& ContoursGivenOut() {
  static HandlesOfPlaces<ProContour> contours;
  return contours;
}

HandlesOfPlaces<ProEdge>& Edges() {
  static HandlesOfPlaces<ProEdge> edges;
  return edges;
}

// The item of a place in a model in session, or null.
const GeometryItem* LiveItem(const Place& place, ProType type, Model*& model) {
  model = TheHost().session.Find(place.model);
  const GeometryItem* item = model ? model->FindItem(type, place.id) : nullptr;
  return item && item->alive ? item : nullptr;
}

ProError SurfaceAt(const Place& place, LiveSurface& surface) {
  Model* model = nullptr;
  const GeometryItem* item = LiveItem(place, PRO_SURFACE, model);
  if (!item) return PRO_TK_INVALID_PTR;
  surface = {model, place.id, nullptr, nullptr};
  if (item->key.empty())
    surface.datum = model->OwnerOf(PRO_SURFACE, place.id);
  else
    surface.face = model->topology.Face(item->key);
  return surface.face || surface.datum ? PRO_TK_NO_ERROR : PRO_TK_INVALID_PTR;
}

}  // namespace

ProError Resolve(ProSurface handle, LiveSurface& surface) {
  Place place{};
  if (const ProError status = Surfaces().Find(handle, "surface", place)) return status;
  return SurfaceAt(place, surface);
}

ProError Resolve(ProContour handle, LiveContour& contour) {
  Place place{};
  if (const ProError status = ContoursGivenOut().Find(handle, "contour", place)) return status;
  if (const ProError status = SurfaceAt(place, contour.surface)) return status;
  const FaceInfo* face = contour.surface.face;
  if (!face || place.contour >= static_cast<int>(face->contours.size())) return PRO_TK_INVALID_PTR;
  contour.edges = &face->contours[place.contour];
  return PRO_TK_NO_ERROR;
}

ProError Resolve(ProEdge handle, LiveEdge& edge) {
  Place place{};
  if (const ProError status = Edges().Find(handle, "edge", place)) return status;
  Model* model = nullptr;
  const GeometryItem* item = LiveItem(place, PRO_EDGE, model);
  if (!item) return PRO_TK_INVALID_PTR;
  edge = {model, place.id, model->topology.Edge(item->key)};
  return edge.edge ? PRO_TK_NO_ERROR : PRO_TK_INVALID_PTR;
}

ProSurface HandleOfSurface(Model& model, int id) {
  return Surfaces().Of({Handle(model), id, 0});
}

ProEdge HandleOfEdge(Model& model, int id) {
  return Edges().Of({Handle(model), id, 0});
}

ProSurface HandleOfFace(Model& model, const std::string& key) {
  const auto id = model.ids_of_keys.find(key);
  return id == model.ids_of_keys.end() ? nullptr : HandleOfSurface(model, id->second);
}

ProEdge HandleOfEdge(Model& model, const std::string& key) {
  const auto id = model.ids_of_keys.find(key);
  return id == model.ids_of_keys.end() ? nullptr : HandleOfEdge(model, id->second);
}

std::vector<ProContour> HandlesOfContours(const LiveSurface& surface) {
  std::vector<ProContour> handles;
  const std::size_t count = surface.face ? surface.face->contours.size() : 0;
  for (std::size_t i = 0; i < count; ++i)
    handles.push_back(ContoursGivenOut().Of({Handle(*surface.model), surface.id, static_cast<int>(i)}));
  return handles;
}

}  // namespace bench

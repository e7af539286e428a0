#include "bench/host/features/sketch_plane.h"

#include <algorithm>

namespace bench {
namespace {

constexpr ProFeattype kDatumPlane = 923;
constexpr int kPlane = 451;
constexpr int kOrientation = 454;
constexpr int kOrientationReference = 455;
constexpr int kReferenceIsTop = 1;

// The sine below which two planes count as parallel.
constexpr double kParallel = 1e-6;

Vector3 Scaled(const Vector3& v, double factor) {
  return {v[0] * factor, v[1] * factor, v[2] * factor};
}

// Without negative zeros, which would make equal planes different recipes.
Vector3 Unit(const Vector3& v) {
  const double length = Length(v);
  return {v[0] / length + 0.0, v[1] / length + 0.0, v[2] / length + 0.0};
}

Vector3 Rejected(const Vector3& v, const Vector3& normal) {
  const double along = Dot(v, normal);
  return {v[0] - along * normal[0], v[1] - along * normal[1], v[2] - along * normal[2]};
}

// Whether `owner` is regenerated before `feature`, which may not be in the model yet.
bool StandsBefore(const Model& model, const Feature& owner, const Feature& feature) {
  for (const auto& each : model.features) {
    if (each->id == feature.id) return false;
    if (each.get() == &owner) return true;
  }
  return false;
}

std::optional<ReferencePlane> PlaneOfFace(const Model& model, const Feature& owner, const std::string& key) {
  const auto face = std::ranges::find(model.topology.faces, key, &FaceInfo::key);
  if (face == model.topology.faces.end() || face->type != "plane") return std::nullopt;
  const double distance = Dot(face->point, face->normal) / MillimetresPer(model.length_unit);
  return ReferencePlane{Scaled(face->normal, distance), face->normal, owner.id};
}

}  // namespace

std::optional<ReferencePlane> PlaneReferredTo(const ElementNode& element, Model& model,
                                              const Feature& feature) {
  const ItemReference& reference = std::get<std::vector<ItemReference>>(element.value).front();
  const bool can_be_plane = reference.type == PRO_SURFACE || reference.type == PRO_DATUM_PLANE;
  if (!can_be_plane || reference.owner != &model) return std::nullopt;
  const Feature* owner = model.OwnerOf(reference.type, reference.id);
  if (!owner || owner->status == PRO_FEAT_SUPPRESSED || !StandsBefore(model, *owner, feature))
    return std::nullopt;
  if (owner->type == kDatumPlane)
    return ReferencePlane{owner->plane.origin, owner->plane.Normal(), owner->id};
  const GeometryItem* item = model.FindItem(reference.type, reference.id);
  return item ? PlaneOfFace(model, *owner, item->key) : std::nullopt;
}

PlaneFrame FrameAcross(const Vector3& origin, const Vector3& normal) {
  const auto size = [](double a, double b) { return std::abs(a) < std::abs(b); };
  Vector3 aside{};
  aside[std::ranges::min_element(normal, size) - normal.begin()] = 1;
  const Vector3 x = Unit(Cross(aside, normal));
  return {origin, x, Unit(Cross(normal, x))};
}

std::variant<SketchPlacement, TreeProblem> PlaceSketch(const ElementNode& setup, Model& model,
                                                       const Feature& feature) {
  const auto plane = PlaneReferredTo(*setup.Child(kPlane), model, feature);
  if (!plane) return TreeProblem{kPlane, "is no plane that the feature can stand on"};
  const auto reference = PlaneReferredTo(*setup.Child(kOrientationReference), model, feature);
  if (!reference) return TreeProblem{kOrientationReference, "is no plane that the feature can stand on"};
  const Vector3 direction = Rejected(reference->normal, plane->normal);
  if (Length(direction) < kParallel)
    return TreeProblem{kOrientationReference, "is parallel to the sketch plane"};

  SketchPlacement placement;
  placement.frame.origin = plane->origin;
  const Vector3 turned = Unit(direction);
  if (IntegerAt(setup, {kOrientation}) == kReferenceIsTop) {
    placement.frame.y = turned;
    placement.frame.x = Unit(Cross(turned, plane->normal));
  } else {
    placement.frame.x = turned;
    placement.frame.y = Unit(Cross(plane->normal, turned));
  }
  placement.parents = {plane->feature};
  if (reference->feature != plane->feature) placement.parents.push_back(reference->feature);
  return placement;
}

}  // namespace bench

#include "bench/host/features/axis.h"

namespace bench {
namespace {

constexpr ProFeattype kDatumAxis = 926;
constexpr ProFeattype kMirror = 950;
constexpr int kMirroredItems = 3161;

std::optional<Axis> AxisOf(Model& model, int id);

// The axes of a mirror are the images of those that its tree names, in their order.
std::optional<Axis> ImageOf(Model& model, const Feature& mirror, int id) {
  int place = 0;
  for (const GeometryItem& item : mirror.items) {
    if (item.type != PRO_AXIS) continue;
    if (item.id == id) break;
    ++place;
  }
  for (const ItemReference& original : ItemsAt(*mirror.tree, {kMirroredItems})) {
    if (original.type != PRO_AXIS || place-- > 0) continue;
    const auto axis = AxisOf(model, original.id);
    if (!axis) return std::nullopt;
    const Vector3 origin = Reflected(axis->origin, mirror.plane);
    const Vector3 ahead = Reflected(axis->origin + axis->direction, mirror.plane);
    return Axis{origin, ahead - origin};
  }
  return std::nullopt;
}

std::optional<Axis> AxisOf(Model& model, int id) {
  const Feature* owner = model.OwnerOf(PRO_AXIS, id);
  if (owner && owner->type == kDatumAxis) return Axis{owner->plane.origin, owner->plane.Normal()};
  if (owner && owner->type == kMirror) return ImageOf(model, *owner, id);
  return std::nullopt;
}

}  // namespace

std::optional<Axis> AxisReferredTo(const ElementNode& element, Model& model) {
  const ItemReference& item = std::get<std::vector<ItemReference>>(element.value).front();
  return item.type == PRO_AXIS && item.owner == &model ? AxisOf(model, item.id) : std::nullopt;
}

Vector3 Reflected(const Vector3& point, const PlaneFrame& plane) {
  const Vector3 normal = plane.Normal();
  return point - 2 * Dot(point - plane.origin, normal) * normal;
}

}  // namespace bench

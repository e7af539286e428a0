#include "bench/host/model/item_names.h"

#include "bench/host/text.h"

namespace bench {
namespace {

constexpr ProFeattype kDatumPlane = 923;

// Whether geometry of that type can be asked for by the name of this feature.
bool LendsItsName(const Feature& feature, ProType type) {
  const bool is_plane = type == PRO_SURFACE || type == PRO_DATUM_PLANE;
  return !is_plane || feature.type == kDatumPlane;
}

std::optional<int> FindFeatureByName(const Model& model, std::wstring_view name) {
  for (const auto& feature : model.features)
    if (!feature->name.empty() && EqualsIgnoringCase(feature->name, name)) return feature->id;
  return std::nullopt;
}

// The first living item of that type for which `has_name(feature, item)` holds.
template <typename Predicate>
std::optional<int> FindItem(const Model& model, ProType type, Predicate has_name) {
  for (const auto& feature : model.features)
    for (const GeometryItem& item : feature->items)
      if (item.type == type && item.alive && has_name(*feature, item)) return item.id;
  return std::nullopt;
}

}  // namespace

std::optional<int> FindByName(const Model& model, ProType type, std::wstring_view name) {
  if (type == PRO_FEATURE) return FindFeatureByName(model, name);
  const auto named_itself = [&](const Feature&, const GeometryItem& item) {
    return !item.name.empty() && EqualsIgnoringCase(item.name, name);
  };
  const auto named_by_owner = [&](const Feature& feature, const GeometryItem&) {
    return LendsItsName(feature, type) && EqualsIgnoringCase(feature.name, name);
  };
  if (const auto id = FindItem(model, type, named_itself)) return id;
  return FindItem(model, type, named_by_owner);
}

std::wstring* NameOf(Model& model, ProType type, int id) {
  if (type == PRO_FEATURE) {
    Feature* feature = model.FindFeature(id);
    return feature ? &feature->name : nullptr;
  }
  GeometryItem* item = model.FindItem(type, id);
  return item && item->alive ? &item->name : nullptr;
}

bool IsNameTaken(const Model& model, ProType type, int id, std::wstring_view name) {
  for (const auto& feature : model.features) {
    if (type == PRO_FEATURE) {
      if (feature->id != id && EqualsIgnoringCase(feature->name, name)) return true;
      continue;
    }
    for (const GeometryItem& item : feature->items)
      if (item.type == type && item.id != id && item.alive && EqualsIgnoringCase(item.name, name))
        return true;
  }
  return false;
}

}  // namespace bench

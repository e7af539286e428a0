#include "bench/host/model/model.h"

#include <algorithm>

namespace bench {

double MillimetresPer(LengthUnit unit) {
  switch (unit) {
    case LengthUnit::kMillimetre:
      return 1.0;
    case LengthUnit::kInch:
      return 25.4;
    case LengthUnit::kMetre:
      return 1000.0;
  }
  return 1.0;
}

Feature* Model::FindFeature(int id) {
  // Callers ask for one feature several times, and for those of a model one after the other. While features
  // are being taken out, there are gaps in the list.
  for (const std::size_t at : {last_found, last_found + 1}) {
    if (at >= features.size() || !features[at] || features[at]->id != id) continue;
    last_found = at;
    return features[at].get();
  }
  const auto found = std::ranges::find_if(features, [id](const auto& feature) { return feature->id == id; });
  if (found == features.end()) return nullptr;
  last_found = static_cast<std::size_t>(found - features.begin());
  return found->get();
}

Feature* Model::OwnerOf(ProType type, int id) {
  if (type == PRO_FEATURE) return FindFeature(id);
  for (const auto& feature : features)
    for (const GeometryItem& item : feature->items)
      if (item.type == type && item.id == id) return feature.get();
  return nullptr;
}

const Feature* Model::OwnerOf(ProType type, int id) const {
  return const_cast<Model*>(this)->OwnerOf(type, id);
}

GeometryItem* Model::FindItem(ProType type, int id) {
  for (const auto& feature : features)
    for (GeometryItem& item : feature->items)
      if (item.type == type && item.id == id) return &item;
  return nullptr;
}

}  // namespace bench

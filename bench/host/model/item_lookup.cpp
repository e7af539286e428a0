#include "bench/host/model/item_lookup.h"

#include <algorithm>

#include "bench/host/host.h"

namespace bench {

Model* LiveSolid(const void* handle) {
  Model* model = TheHost().session.Find(const_cast<void*>(handle));
  return model && (model->type == PRO_MDL_PART || model->type == PRO_MDL_ASSEMBLY) ? model : nullptr;
}

bool ItemExists(const ProModelitem& item) {
  Model* model = TheHost().session.Find(item.owner);
  if (!model) return false;
  if (item.type == kCrossSectionType)
    return std::ranges::find(model->cross_sections, item.id, &CrossSection::id) !=
           model->cross_sections.end();
  switch (item.type) {
    case PRO_PART:
    case PRO_ASSEMBLY:
    case PRO_DRAWING:
      return static_cast<int>(item.type) == static_cast<int>(model->type);
    case PRO_FEATURE:
      return model->FindFeature(item.id) != nullptr;
    case PRO_DIMENSION:
      return std::ranges::find(model->dimensions, item.id, &Dimension::id) != model->dimensions.end();
    default: {
      const GeometryItem* geometry = model->FindItem(item.type, item.id);
      return geometry && geometry->alive;
    }
  }
}

Feature* FindFeature(const ProFeature* feature) {
  if (!feature || feature->type != PRO_FEATURE) return nullptr;
  Model* model = LiveSolid(feature->owner);
  return model ? model->FindFeature(feature->id) : nullptr;
}

}  // namespace bench

#include "bench/host/model/extent.h"

#include <algorithm>

#include "bench/host/model/component.h"

namespace bench {
namespace {

void Include(std::optional<Box>& box, const Vector3& point) {
  if (!box) box = Box{point, point};
  for (int i = 0; i < 3; ++i) {
    box->low[i] = std::min(box->low[i], point[i]);
    box->high[i] = std::max(box->high[i], point[i]);
  }
}

void IncludeCorners(std::optional<Box>& box, const Box& placed, const Matrix& place) {
  for (int corner = 0; corner < 8; ++corner) {
    Vector3 point{};
    for (int i = 0; i < 3; ++i) point[i] = corner & 1 << i ? placed.high[i] : placed.low[i];
    Include(box, MovedBy(place, point));
  }
}

// Every part is taken where it lies, so that nested boxes don't grow twice.
void AddParts(const Model& model, const Matrix& place, Extent& extent) {
  if (model.topology.mass) extent.volume = extent.volume.value_or(0) + model.topology.mass->volume;
  if (model.topology.outline) IncludeCorners(extent.outline, *model.topology.outline, place);
  for (const Feature* feature : ActiveComponents(model)) {
    const Matrix here = Scaled(feature->component->place, MillimetresPer(model.length_unit));
    AddParts(*PlacedModel(*feature->component), Composed(place, here), extent);
  }
}

}  // namespace

Extent ExtentOf(const Model& model) {
  Extent extent;
  AddParts(model, kNoMove, extent);
  return extent;
}

}  // namespace bench

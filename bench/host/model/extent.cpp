#include "bench/host/model/extent.h"

#include <algorithm>

#include "bench/host/model/component.h"

namespace bench {
namespace {

constexpr double kKilogramsPerCubicMillimetre = 1e-6;  // of 1 g/cm³

// The centre is the sum of all moments until the last body is in.
void AddBody(std::optional<Weight>& sum, const MassProperties& body, double density, const Matrix& place) {
  if (!sum) sum = Weight{};
  const double mass = density * kKilogramsPerCubicMillimetre * body.volume;
  sum->volume += body.volume;
  sum->area += body.area;
  sum->mass += mass;
  sum->center = sum->center + mass * MovedBy(place, body.center);
}

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
  if (model.topology.mass) AddBody(extent.weight, *model.topology.mass, model.density, place);
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
  if (extent.weight) extent.weight->center = 1 / extent.weight->mass * extent.weight->center;
  return extent;
}

}  // namespace bench

#include "bench/kernel/features/sketch.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <string>

#include "bench/kernel/refusal.h"
#include "bench/kernel/section.h"

namespace bench::kernel {

SketchGeometry DrawSketch(const Sketch& sketch) {
  SketchGeometry drawn;
  for (const PlanarCurve& curve : BoundingCurves(sketch.entities)) {
    BRepBuilderAPI_MakeEdge maker(InSpace(curve.curve, sketch.plane), curve.first, curve.last);
    if (!maker.IsDone()) throw Refusal("Entity " + std::to_string(curve.entity) + " makes no edge.");
    drawn.curves.push_back({curve.entity, maker.Edge()});
  }
  for (const Entity& entity : sketch.entities) {
    const auto* point = std::get_if<PointEntity>(&entity.geometry);
    if (point && !entity.construction) drawn.points.push_back({entity.id, InSpace(point->at, sketch.plane)});
  }
  return drawn;
}

}  // namespace bench::kernel

#include "bench/kernel/features/sketch.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <optional>
#include <string>

#include "bench/kernel/refusal.h"
#include "bench/kernel/section.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

namespace {

void DrawPoints(const Sketch& sketch, SketchGeometry& drawn) {
  for (const Entity& entity : sketch.entities)
    if (const auto* point = std::get_if<PointEntity>(&entity.geometry))
      (entity.construction ? drawn.guide_points : drawn.points)
          .push_back({entity.id, InSpace(point->at, sketch.plane)});
}

// None for what is a curve of the model, and for a text, of which nothing is drawn as construction.
std::optional<PlanarCurve> GuideOf(const Entity& entity) {
  if (const auto* line = std::get_if<CenterlineEntity>(&entity.geometry))
    return CurveOf({entity.id, entity.construction, LineEntity{line->from, line->to}});
  return entity.construction ? CurveOf(entity) : std::nullopt;
}

SketchCurve Drawn(const PlanarCurve& curve, const gp_Ax3& plane) {
  BRepBuilderAPI_MakeEdge maker(InSpace(curve.curve, plane), curve.first, curve.last);
  if (!maker.IsDone()) throw Refusal("Entity " + std::to_string(curve.entity) + " makes no edge.");
  return {curve.entity, maker.Edge()};
}

SketchGeometry Draw(const Sketch& sketch) {
  SketchGeometry drawn;
  for (const PlanarCurve& curve : BoundingCurves(sketch.entities))
    drawn.curves.push_back(Drawn(curve, sketch.plane));
  for (const Entity& entity : sketch.entities)
    if (const auto guide = GuideOf(entity)) drawn.guides.push_back(Drawn(*guide, sketch.plane));
  DrawPoints(sketch, drawn);
  return drawn;
}

class SketchFeature : public Feature {
 public:
  explicit SketchFeature(Sketch sketch) : sketch_(std::move(sketch)) {}

  void Build(const FeaturePlace&, const Before&, Stage& stage) const override { stage.drawn = Draw(sketch_); }

  std::unique_ptr<const Feature> Moved(const gp_Trsf& motion) const override {
    Sketch moved = sketch_;
    moved.plane.Transform(motion);
    return std::make_unique<SketchFeature>(std::move(moved));
  }

  bool ShapesTheBody() const override { return false; }

  const Sketch& sketch() const { return sketch_; }

 private:
  Sketch sketch_;
};

}  // namespace

std::string SketchKey(int feature, const char* what, int entity) {
  return std::to_string(feature) + ":" + what + ":" + std::to_string(entity);
}

gp_Pnt SketchPointNamed(const std::string& key, std::span<const Recipe> recipes) {
  for (const Recipe& recipe : recipes) {
    const auto* sketch = dynamic_cast<const SketchFeature*>(recipe.content.get());
    if (!sketch) continue;
    SketchGeometry drawn;
    DrawPoints(sketch->sketch(), drawn);
    for (const SketchPoint& point : drawn.points)
      if (SketchKey(recipe.feature, "point", point.entity) == key) return point.at;
  }
  throw Refusal("There is no sketch point " + key + ".");
}

std::unique_ptr<const Feature> ReadSketchFeature(const Fields& fields, const std::string& where) {
  return std::make_unique<SketchFeature>(ReadSketch(fields, where));
}

}  // namespace bench::kernel

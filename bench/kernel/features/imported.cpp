#include "bench/kernel/features/imported.h"

#include <BRepCheck_Analyzer.hxx>
#include <TopoDS.hxx>
#include <utility>

#include "bench/kernel/boolean.h"
#include "bench/kernel/bounds.h"
#include "bench/kernel/measures.h"
#include "bench/kernel/quilt.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/shape_text.h"
#include "bench/kernel/solid_in_work.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

namespace {

// The faces' names, by their order in the shape.
FaceNames NamesIn(const TopoDS_Shape& shape, const FeaturePlace& place) {
  FaceNames names;
  int number = 0;
  for (const TopoDS_Shape& face : Distinct(shape, TopAbs_FACE)) {
    ++number;
    names.Bind(face, OwnName(place, number, "face:" + std::to_string(number)));
  }
  return names;
}

bool AreApart(const Bounds& a, const Bounds& b) {
  constexpr double kGap = 1e-5;  // mm
  for (int axis = 1; axis <= 3; ++axis)
    if (a.low.Coord(axis) > b.high.Coord(axis) + kGap || b.low.Coord(axis) > a.high.Coord(axis) + kGap)
      return true;
  return false;
}

// Faces stay as they came, also where they go on in another one. Solids that can't meet are left alone.
NamedShape JoinAsTheyAre(const NamedShape& body, const NamedShape& imported) {
  const Bounds room = BoundsOf(imported.Compound());
  NamedShape near, joined;
  near.motion = joined.motion = body.motion;
  for (const TopoDS_Solid& solid : body.solids)
    KeepSolid(solid, body.names, AreApart(BoundsOf(solid), room) ? joined : near);
  const NamedShape met = near.IsEmpty() ? imported : Boolean(BooleanKind::kFuse, near, imported).Result();
  for (const TopoDS_Solid& solid : met.solids) KeepSolid(solid, met.names, joined);
  return joined;
}

class ImportedFeature : public Feature {
 public:
  ImportedFeature(std::string text, const gp_Trsf& motion) : text_(std::move(text)), motion_(motion) {}

  void Build(const FeaturePlace& place, const Before&, Stage& stage) const override {
    const TopoDS_Shape shape = ShapeOf(text_).Moved(TopLoc_Location(motion_));
    NamedShape imported;
    imported.solids = SolidsIn(shape);
    imported.names = NamesIn(shape, place);
    if (imported.names.IsEmpty()) throw Refusal("The imported shape has no faces.");
    if (!BRepCheck_Analyzer(shape).IsValid()) throw Refusal("The imported shape is not valid.");
    if (imported.IsEmpty()) return AddQuilts(shape, imported.names, place, stage.quilts);
    for (const TopoDS_Solid& solid : imported.solids) {
      NamedShape alone;
      alone.solids = {solid};
      if (!(VolumeOf(alone) > 0)) throw Refusal("An imported solid has its material outside.");
    }
    stage.body = stage.body.IsEmpty() ? imported : JoinAsTheyAre(stage.body, imported);
  }

  std::unique_ptr<const Feature> Moved(const gp_Trsf& motion) const override {
    return std::make_unique<ImportedFeature>(text_, motion * motion_);
  }

 private:
  std::string text_;  // read when the feature is built: most requests find it built
  gp_Trsf motion_;
};

}  // namespace

std::unique_ptr<const Feature> ReadImported(const Fields& fields, const std::string&) {
  return std::make_unique<ImportedFeature>(fields.Text("shape"), gp_Trsf());
}

}  // namespace bench::kernel

#include "bench/kernel/features/hole.h"

#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepExtrema_DistShapeShape.hxx>
#include <BRepGProp_Face.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRep_Tool.hxx>
#include <GeomAPI_ProjectPointOnSurf.hxx>
#include <optional>

#include "bench/kernel/features/body.h"
#include "bench/kernel/features/sketch.h"
#include "bench/kernel/keys.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

namespace {

struct HoleRecipe {
  std::string point;                // the sketch point's key
  std::optional<gp_Dir> direction;  // none: into the material under the point
  double diameter = 0, depth = 0;
};

constexpr double kLeastSize = 1e-5;
constexpr double kLargestSize = 1e7;
constexpr double kOnFace = 1e-5;  // a point this close to a face lies on it

void CheckNumbers(const HoleRecipe& recipe) {
  if (!(recipe.diameter > kLeastSize)) throw Refusal("The diameter must be above 0.");
  if (!(recipe.depth > kLeastSize)) throw Refusal("The depth must be above 0.");
  if (!(recipe.diameter <= kLargestSize && recipe.depth <= kLargestSize))
    throw Refusal("The hole is too large.");
}

// Out of the material, at the point of the face's surface that lies nearest.
gp_Dir NormalAt(const TopoDS_Face& face, const gp_Pnt& point) {
  const GeomAPI_ProjectPointOnSurf projection(point, BRep_Tool::Surface(face));
  if (projection.NbPoints() < 1) throw Refusal("The face under the point has no direction there.");
  double u = 0, v = 0;
  projection.LowerDistanceParameters(u, v);
  gp_Pnt foot;
  gp_Vec normal;
  BRepGProp_Face(face).Normal(u, v, foot, normal);
  if (!(normal.Magnitude() > gp::Resolution()))
    throw Refusal("The face under the point has no direction there.");
  return normal;
}

// Into the first of the body's faces, in the order of their keys, on which the point lies.
gp_Dir IntoMaterial(const gp_Pnt& point, const NamedShape& body, FaceFactsCache& facts) {
  const BodyKeys keys(body, facts);
  const TopoDS_Vertex vertex = BRepBuilderAPI_MakeVertex(point);
  for (const KeyedFace& keyed : keys.faces()) {
    const BRepExtrema_DistShapeShape distance(vertex, keyed.face);
    if (distance.IsDone() && distance.Value() <= kOnFace) return NormalAt(keyed.face, point).Reversed();
  }
  throw Refusal("The point lies on no face of the body.");
}

NamedShape Drill(const HoleRecipe& recipe, const gp_Ax2& place_in_space, const FeaturePlace& place) {
  BRepPrimAPI_MakeCylinder maker(place_in_space, recipe.diameter / 2, recipe.depth);
  maker.Build();
  if (!maker.IsDone()) throw Refusal("The hole can't be drilled.");
  NamedShape drill;
  drill.solids = SolidsIn(maker.Shape());
  drill.names.Bind(maker.Cylinder().BottomFace(), StartName(place));
  drill.names.Bind(maker.Cylinder().TopFace(), EndName(place));
  drill.names.Bind(maker.Cylinder().LateralFace(), OwnName(place, kSideRank, "side"));
  return drill;
}

class HoleFeature : public Feature {
 public:
  HoleFeature(HoleRecipe recipe, const gp_Trsf& motion) : recipe_(std::move(recipe)), motion_(motion) {}

  void Build(const FeaturePlace& place, const Before& before, Stage& stage) const override {
    CheckNumbers(recipe_);
    if (stage.body.IsEmpty()) throw Refusal("There is no body to drill.");
    const gp_Pnt point = SketchPointNamed(recipe_.point, before.recipes).Transformed(motion_);
    const gp_Dir direction = recipe_.direction ? recipe_.direction->Transformed(motion_)
                                               : IntoMaterial(point, stage.body, before.facts);
    stage.body = Cut(stage.body, Drill(recipe_, gp_Ax2(point, direction), place));
  }

  std::unique_ptr<const Feature> Moved(const gp_Trsf& motion) const override {
    return std::make_unique<HoleFeature>(recipe_, motion * motion_);
  }

 private:
  HoleRecipe recipe_;
  gp_Trsf motion_;  // from the sketch's point to where this hole is
};

}  // namespace

std::unique_ptr<const Feature> ReadHole(const Fields& fields, const std::string&) {
  HoleRecipe recipe;
  recipe.point = fields.Text("point");
  recipe.diameter = fields.Number("diameter");
  recipe.depth = fields.Number("depth");
  if (fields.Has("direction")) {
    const gp_XYZ direction = fields.Vector("direction");
    if (!(direction.Modulus() > gp::Resolution())) fields.Complain("'direction' must have a length");
    recipe.direction = gp_Dir(direction);
  }
  return std::make_unique<HoleFeature>(std::move(recipe), gp_Trsf());
}

}  // namespace bench::kernel

#include "bench/kernel/features/revolve.h"

#include <BRepCheck_Analyzer.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepSweep_Revol.hxx>
#include <BndLib_Add2dCurve.hxx>
#include <Bnd_Box2d.hxx>
#include <Geom2dAdaptor_Curve.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <cmath>
#include <numbers>

#include "bench/kernel/features/body.h"
#include "bench/kernel/measures.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/section.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

namespace {

struct RevolveRecipe {
  Sketch sketch;
  Operation operation = Operation::kJoin;
  double angle_deg = 0;
  bool reverse = false;
};

constexpr double kLeastAngle = 1e-6;      // degrees
constexpr double kAngleTolerance = 1e-9;  // degrees

CenterlineEntity FindAxis(const std::vector<Entity>& entities) {
  for (const Entity& entity : entities) {
    if (const auto* line = std::get_if<CenterlineEntity>(&entity.geometry)) return *line;
  }
  throw Refusal("The section has no centerline to revolve about.");
}

// Throws Refusal when the section has points on both sides of the axis.
void CheckSide(const std::vector<PlanarCurve>& curves, const CenterlineEntity& axis) {
  gp_Trsf2d onto_x_axis;
  onto_x_axis.SetTransformation(gp_Ax2d(axis.from, gp_Dir2d(gp_Vec2d(axis.from, axis.to))));
  double low = 0, high = 0;
  for (const PlanarCurve& curve : curves) {
    const auto turned = Handle(Geom2d_Curve)::DownCast(curve.curve->Transformed(onto_x_axis));
    Bnd_Box2d box;
    BndLib_Add2dCurve::AddOptimal(turned, curve.first, curve.last, 0, box);
    double x_low = 0, x_high = 0, y_low = 0, y_high = 0;
    box.Get(x_low, y_low, x_high, y_high);
    low = std::min(low, y_low);
    high = std::max(high, y_high);
  }
  if (low < -kJoinTolerance && high > kJoinTolerance) throw Refusal("The section crosses its axis.");
}

// One face of the section, turned.
NamedShape TurnedFace(const Section& section, const TopoDS_Face& face, const gp_Ax1& axis, double angle_deg,
                      const FeaturePlace& place) {
  const bool full = angle_deg >= 360 - kAngleTolerance;
  const double angle = full ? 2 * std::numbers::pi : angle_deg * std::numbers::pi / 180;
  BRepPrimAPI_MakeRevol maker(face, axis, angle);
  if (!maker.IsDone()) throw Refusal("The section can't be revolved.");
  NamedShape shape;
  shape.solids = SolidsIn(maker.Shape());
  if (!full) {
    shape.names.Bind(maker.FirstShape(face), StartName(place));
    shape.names.Bind(maker.LastShape(face), EndName(place));
  }
  // The maker's own history leaves out the flat walls of a full turn; its sweep knows them.
  BRepSweep_Revol sweep = maker.Revol();
  for (TopExp_Explorer edges(face, TopAbs_EDGE); edges.More(); edges.Next()) {
    const TopoDS_Shape wall = sweep.Shape(edges.Current());
    const bool on_axis = wall.IsNull() || wall.ShapeType() != TopAbs_FACE;
    if (!on_axis) shape.names.Bind(wall, SideName(place, section.entities.Find(edges.Current())));
  }
  // A section on the one side of its axis comes out with its faces turned outside in.
  if (VolumeOf(shape) < 0) {
    for (TopoDS_Solid& solid : shape.solids) solid.Reverse();
  }
  return shape;
}

NamedShape Turned(const Section& section, const gp_Ax1& axis, double angle_deg, const FeaturePlace& place) {
  NamedShape shape;
  for (const TopoDS_Face& face : section.faces) {
    const NamedShape turned = TurnedFace(section, face, axis, angle_deg, place);
    shape.solids.insert(shape.solids.end(), turned.solids.begin(), turned.solids.end());
    for (const TopoDS_Face& wall : turned.Faces()) shape.names.Bind(wall, turned.names.Find(wall));
  }
  return shape;
}

NamedShape Revolved(const RevolveRecipe& recipe, const FeaturePlace& place, const NamedShape& body) {
  if (!(recipe.angle_deg > kLeastAngle)) throw Refusal("The angle must be above 0.");
  if (!(recipe.angle_deg <= 360 + kAngleTolerance)) throw Refusal("The angle must not be above 360 degrees.");
  const Section section = BuildSection(recipe.sketch);
  const CenterlineEntity line = FindAxis(recipe.sketch.entities);
  CheckSide(section.curves, line);

  const gp_Pnt from = InSpace(line.from, section.plane);
  gp_Ax1 axis(from, gp_Dir(gp_Vec(from, InSpace(line.to, section.plane))));
  if (recipe.reverse) axis.Reverse();
  const NamedShape tool = Turned(section, axis, recipe.angle_deg, place);
  if (tool.IsEmpty() || !BRepCheck_Analyzer(tool.Compound()).IsValid() || !(VolumeOf(tool) > 0))
    throw Refusal("The revolved section makes no valid solid.");
  return Apply(recipe.operation, body, Unified(tool));
}

class RevolveFeature : public Feature {
 public:
  explicit RevolveFeature(RevolveRecipe recipe) : recipe_(std::move(recipe)) {}

  void Build(const FeaturePlace& place, const Before&, Stage& stage) const override {
    stage.body = Revolved(recipe_, place, stage.body);
  }

  std::unique_ptr<const Feature> Moved(const gp_Trsf& motion) const override {
    RevolveRecipe moved = recipe_;
    moved.sketch.plane.Transform(motion);
    return std::make_unique<RevolveFeature>(std::move(moved));
  }

 private:
  RevolveRecipe recipe_;
};

}  // namespace

std::unique_ptr<const Feature> ReadRevolve(const Fields& fields, const std::string& where) {
  RevolveRecipe recipe;
  recipe.sketch = ReadSketch(fields, where);
  recipe.operation = ReadOperation(fields);
  recipe.angle_deg = fields.Number("angle_deg");
  recipe.reverse = fields.Flag("reverse", false);
  return std::make_unique<RevolveFeature>(std::move(recipe));
}

}  // namespace bench::kernel

#include "bench/kernel/features/move.h"

#include <BRepBuilderAPI_Transform.hxx>
#include <TopoDS.hxx>
#include <cmath>
#include <gp_Mat.hxx>
#include <gp_Quaternion.hxx>

#include "bench/kernel/refusal.h"
#include "bench/kernel/stage.h"

namespace bench::kernel {

namespace {

class MoveFeature : public Feature {
 public:
  explicit MoveFeature(const gp_Trsf& motion) : motion_(motion) {}

  void Build(const FeaturePlace&, const Before&, Stage& stage) const override {
    const NamedShape& body = stage.body;
    if (body.IsEmpty()) throw Refusal("There is no body to move.");
    // The geometry itself moves: faces that only carried a location would meet later features at two places
    // of one surface.
    constexpr bool kCopyGeometry = true;
    BRepBuilderAPI_Transform transform(body.Compound(), motion_, kCopyGeometry);
    if (!transform.IsDone()) throw Refusal("The body can't be moved.");
    const Descent descent = [&transform](const TopoDS_Face& face) {
      return std::vector<TopoDS_Face>{TopoDS::Face(transform.ModifiedShape(face))};
    };
    NamedShape moved = CarryNames({&body}, descent, transform.Shape());
    moved.motion = motion_ * body.motion;
    stage.body = std::move(moved);
  }

 private:
  gp_Trsf motion_;
};

bool AreRightHandedUnits(const gp_XYZ& x, const gp_XYZ& y, const gp_XYZ& z) {
  constexpr double kTolerance = 1e-6;
  const auto is_unit = [](const gp_XYZ& v) { return std::abs(v.Modulus() - 1) < kTolerance; };
  return is_unit(x) && is_unit(y) && (x.Crossed(y) - z).Modulus() < kTolerance &&
         std::abs(x.Dot(y)) < kTolerance;
}

}  // namespace

std::unique_ptr<const Feature> ReadMove(const Fields& fields, const std::string&) {
  const gp_XYZ x = fields.Vector("x"), y = fields.Vector("y"), z = fields.Vector("z");
  if (!AreRightHandedUnits(x, y, z))
    fields.Complain("'x', 'y' and 'z' must be right-handed unit vectors at right angles");
  // By way of a quaternion, the last digits of the axes make no scale.
  gp_Trsf motion;
  motion.SetTransformation(gp_Quaternion(gp_Mat(x, y, z)), gp_Vec(fields.Vector("origin")));
  return std::make_unique<MoveFeature>(motion);
}

}  // namespace bench::kernel

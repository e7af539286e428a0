#include "bench/kernel/features/chamfer.h"

#include <BRepFilletAPI_MakeChamfer.hxx>
#include <numbers>

#include "bench/kernel/features/edge_feature.h"
#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

enum class Scheme { kEqual, kTwoDistances, kDistanceAndAngle };

Scheme ReadScheme(const Fields& fields) {
  const std::string scheme = fields.Text("scheme");
  if (scheme == "equal") return Scheme::kEqual;
  if (scheme == "two") return Scheme::kTwoDistances;
  if (scheme == "angle") return Scheme::kDistanceAndAngle;
  fields.Complain("unknown scheme '" + scheme + "'");
}

class ChamferFeature : public EdgeFeature {
 public:
  explicit ChamferFeature(const Fields& fields)
      : EdgeFeature(fields, "chamfer"), scheme_(ReadScheme(fields)), distance_(fields.Number("distance")) {
    if (scheme_ == Scheme::kTwoDistances) second_ = fields.Number("distance2");
    if (scheme_ == Scheme::kDistanceAndAngle) second_ = fields.Number("angle_deg");
    if (scheme_ != Scheme::kEqual) reference_ = fields.Text("reference");
  }

 protected:
  void Check(const BodyKeys& keys) const override {
    if (!(distance_ > 0)) throw Refusal("The distance must be above 0.");
    if (scheme_ == Scheme::kEqual) return;
    if (!(second_ > 0)) throw Refusal("The second distance or angle must be above 0.");
    if (scheme_ == Scheme::kDistanceAndAngle && !(second_ < 90))
      throw Refusal("The angle must be below 90 degrees.");
    const KeyedEdge& edge = keys.Edge(edges().front());
    if (edge.first->key != reference_ && edge.second->key != reference_)
      throw Refusal("The reference surface isn't at the first edge.");
  }

  std::unique_ptr<BRepFilletAPI_LocalOperation> Start(const TopoDS_Solid& solid) const override {
    return std::make_unique<BRepFilletAPI_MakeChamfer>(solid);
  }

  void Add(BRepFilletAPI_LocalOperation& maker, const KeyedEdge& edge,
           const SolidInWork& solid) const override {
    auto& chamfer = static_cast<BRepFilletAPI_MakeChamfer&>(maker);
    const TopoDS_Edge copy = solid.CopyOf(edge);
    // Edges away from the reference surface are measured from the older one of their faces.
    const KeyedFace& measured_from = edge.second->key == reference_ ? *edge.second : *edge.first;
    const TopoDS_Face face = solid.CopyOf(measured_from);
    switch (scheme_) {
      case Scheme::kEqual:
        return chamfer.Add(distance_, copy);
      case Scheme::kTwoDistances:
        return chamfer.Add(distance_, second_, copy, face);
      case Scheme::kDistanceAndAngle:
        return chamfer.AddDA(distance_, second_ * std::numbers::pi / 180, copy, face);
    }
  }

 private:
  Scheme scheme_ = Scheme::kEqual;
  double distance_ = 0;  // on the reference surface
  double second_ = 0;    // on the other one, or degrees between the bevel and the reference surface
  std::string reference_;
};

}  // namespace

std::unique_ptr<const Feature> ReadChamfer(const Fields& fields, const std::string&) {
  return std::make_unique<ChamferFeature>(fields);
}

}  // namespace bench::kernel

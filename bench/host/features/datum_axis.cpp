// The datum axis: where two planes meet.
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/sketch_plane.h"

namespace bench {
namespace {

constexpr ProFeattype kDatumAxis = 926;
constexpr int kConstraints = 2015;
constexpr int kConstraint = 2016;
constexpr int kThrough = 1;
constexpr int kPlane = 2018;

// The sine below which two planes count as parallel.
constexpr double kParallel = 1e-6;

class DatumAxisKind : public FeatureKind {
 public:
  ProFeattype Type(const ElementNode&) const override { return kDatumAxis; }

  bool HasPlane() const override { return true; }

  std::vector<ProType> Datums(const ElementNode&) const override { return {PRO_AXIS}; }

  // The feature's plane is square to the axis: the origin lies on it, the normal runs along it.
  std::optional<TreeProblem> Place(Model& model, Feature& feature) const override {
    if (auto problem = FeatureKind::Place(model, feature)) return problem;
    std::vector<ReferencePlane> planes;
    for (const auto& constraint : feature.tree->Child(kConstraints)->children) {
      const auto plane = PlaneReferredTo(*constraint->Child(kPlane), model, feature);
      if (!plane) return TreeProblem{kPlane, "is no plane that the axis can lie in"};
      planes.push_back(*plane);
    }
    const Vector3 &n1 = planes[0].normal, &n2 = planes[1].normal;
    const Vector3 along = Cross(n1, n2);
    if (!(Length(along) > kParallel)) return TreeProblem{kPlane, "is parallel to the other plane"};
    const Vector3 across =
        Dot(planes[0].origin, n1) * Cross(n2, along) + Dot(planes[1].origin, n2) * Cross(along, n1);
    feature.plane = FrameAcross(1 / Dot(along, along) * across, 1 / Length(along) * along);
    return std::nullopt;
  }

  nlohmann::json Recipe(const Feature&, const Model&) const override { return nullptr; }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kDatumAxis}},
        {{1964}, false},
        {{kConstraints}},
        {{kConstraints, kConstraint}, true, {}, true},
        {{kConstraints, kConstraint, 2017}, true, {kThrough}},
        {{kConstraints, kConstraint, kPlane}},
    };
    return rules;
  }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    if (tree.Child(kConstraints)->children.size() == 2) return std::nullopt;
    return TreeProblem{kConstraint, "must stand there twice"};
  }
};

}  // namespace

bool IsDatumAxis(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kDatumAxis;
}

const FeatureKind& DatumAxis() {
  static const DatumAxisKind kind;
  return kind;
}

}  // namespace bench

// The datum plane at a distance from another plane.
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/sketch_plane.h"

namespace bench {
namespace {

constexpr ProFeattype kDatumPlane = 923;
constexpr int kConstraints = 410;
constexpr int kConstraint = 411;
constexpr int kConstraintType = 412;
constexpr int kOffsetFrom = 3;
constexpr int kBase = 413;
constexpr int kDistance = 414;

class DatumPlaneKind : public FeatureKind {
 public:
  ProFeattype Type(const ElementNode&) const override { return kDatumPlane; }

  bool HasPlane() const override { return true; }

  std::vector<ProType> Datums(const ElementNode&) const override { return {PRO_SURFACE, PRO_DATUM_PLANE}; }

  std::vector<DimensionRule> Dimensions() const override {
    return {{{kConstraints, kConstraint, kDistance}}};
  }

  // Along the base's normal, turned as the base is where that is a datum plane.
  std::optional<TreeProblem> Place(Model& model, Feature& feature) const override {
    if (auto problem = FeatureKind::Place(model, feature)) return problem;
    const ElementNode& base = *feature.tree->Find({kConstraints, kConstraint, kBase});
    const auto plane = PlaneReferredTo(base, model, feature);
    if (!plane) return TreeProblem{kBase, "is no plane to be offset from"};
    const Feature* owner = model.FindFeature(plane->feature);
    feature.plane = owner->type == kDatumPlane ? owner->plane : FrameAcross(plane->origin, plane->normal);
    const double distance = DoubleAt(*feature.tree, {kConstraints, kConstraint, kDistance});
    feature.plane.origin = plane->origin + distance * plane->normal;
    return std::nullopt;
  }

  nlohmann::json Recipe(const Feature&, const Model&) const override { return nullptr; }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kDatumPlane}},
        {{1964}, false},
        {{kConstraints}},
        {{kConstraints, kConstraint}},
        {{kConstraints, kConstraint, kConstraintType}, true, {kOffsetFrom}},
        {{kConstraints, kConstraint, kBase}},
        {{kConstraints, kConstraint, kDistance}},
    };
    return rules;
  }
};

}  // namespace

bool IsDatumPlane(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kDatumPlane;
}

const FeatureKind& DatumPlane() {
  static const DatumPlaneKind kind;
  return kind;
}

}  // namespace bench

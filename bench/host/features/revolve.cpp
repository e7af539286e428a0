// The revolve: a sketch's section, turned about the first centerline in it.
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/section_recipe.h"
#include "bench/host/model/section_check.h"

namespace bench {
namespace {

constexpr int kProtrusion = 917;
constexpr int kCut = 916;
constexpr int kAddMaterial = -1;
constexpr int kRevolveForm = 2;
constexpr int kRightHanded = -1;
constexpr int kLeftHanded = 1;
constexpr int kAxisOfSection = 1;
constexpr int kNoAngle = 262144;
constexpr int kVariableAngle = 4194304;
constexpr double kFullTurnDeg = 360;

class RevolveKind : public FeatureKind {
 public:
  SectionSource Source() const override { return SectionSource::kSketch; }

  ProFeattype Type(const ElementNode& tree) const override {
    return IntegerAt(tree, {2023}) == kCut ? kCut : kProtrusion;
  }

  std::optional<TreeProblem> CheckSection(const SectionData& section) const override {
    if (HasCenterline(section)) return std::nullopt;
    return TreeProblem{3280, "needs a centerline in the section"};
  }

  std::vector<DimensionRule> Dimensions() const override { return {{{6, 438, 442}, true}}; }

  nlohmann::json Recipe(const Feature& feature, const Model& model) const override {
    const double mm = MillimetresPer(model.length_unit);
    const ElementNode& tree = *feature.tree;
    return {{"kind", "revolve"},
            {"plane", PlaneRecipe(feature.plane, mm)},
            {"entities", EntitiesRecipe(*feature.section, mm)},
            {"operation", IntegerAt(tree, {2023}) == kCut ? "cut" : "join"},
            {"angle_deg", DoubleAt(tree, {6, 438, 442})},
            {"reverse", IntegerAt(tree, {436}) == kLeftHanded}};
  }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kProtrusion}},
        {{388}, true, {kRevolveForm}},
        {{1956}, true, {kProtrusion}},
        {{2023}, true, {kCut, kAddMaterial}},
        {{3176}, true, {0}},
        {{1964}, false},
        {{447}},
        {{447, 458}, false},
        {{436}, true, {kRightHanded, kLeftHanded}},
        {{3280}, true, {kAxisOfSection}},
        {{6}},
        {{6, 437}},
        {{6, 438}},
        {{6, 437, 439}, true, {kNoAngle}},
        {{6, 438, 440}, true, {kVariableAngle}},
        {{6, 438, 442}},
    };
    return rules;
  }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    const double angle = DoubleAt(tree, {6, 438, 442});
    if (!(angle > 0 && angle <= kFullTurnDeg)) return TreeProblem{442, "must be above 0, up to a full turn"};
    return std::nullopt;
  }
};

}  // namespace

bool IsRevolve(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kProtrusion && IntegerAt(tree, {388}) == kRevolveForm;
}

const FeatureKind& Revolve() {
  static const RevolveKind kind;
  return kind;
}

}  // namespace bench

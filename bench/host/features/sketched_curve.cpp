// The sketched curve: a section on a plane, drawn in the feature itself.
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/section_recipe.h"
#include "bench/host/features/sketch_plane.h"
#include "bench/host/model/section_check.h"

namespace bench {
namespace {

constexpr int kCurve = 949;
constexpr int kSketched = 0;
constexpr int kViewFromTheNormal = 1;
constexpr int kReferenceIsTop = 1;
constexpr int kReferenceIsRight = 4;

class SketchedCurveKind : public FeatureKind {
 public:
  SectionSource Source() const override { return SectionSource::kOwn; }

  ProFeattype Type(const ElementNode&) const override { return kCurve; }

  bool HasPlane() const override { return true; }

  std::optional<TreeProblem> Place(Model& model, Feature& feature) const override {
    auto placed = PlaceSketch(*feature.tree->Find({kSectionElement, kSetupElement}), model, feature);
    if (const auto* problem = std::get_if<TreeProblem>(&placed)) return *problem;
    auto& placement = std::get<SketchPlacement>(placed);
    feature.plane = placement.frame;
    feature.parents = std::move(placement.parents);
    return std::nullopt;
  }

  std::optional<TreeProblem> CheckSection(const SectionData& section) const override {
    if (section.entities.empty()) return TreeProblem{kSketcherElement, "is empty"};
    const auto degenerate = DegenerateEntities(section);
    if (degenerate.empty()) return std::nullopt;
    return TreeProblem{kSketcherElement,
                       "holds entity " + std::to_string(degenerate.front()) + ", which has no extent"};
  }

  nlohmann::json Recipe(const Feature& feature, const Model& model) const override {
    const double mm = MillimetresPer(model.length_unit);
    return {{"kind", "sketch"},
            {"plane", PlaneRecipe(feature.plane, mm)},
            {"entities", EntitiesRecipe(*feature.section, mm)}};
  }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kCurve}},
        {{511}, true, {kSketched}},
        {{1964}, false},
        {{447}},
        {{447, 450}},
        {{447, 450, 451}},
        {{447, 450, 452}, true, {kViewFromTheNormal}},
        {{447, 450, 454}, true, {kReferenceIsTop, kReferenceIsRight}},
        {{447, 450, 455}},
        {{447, 458}, false},
    };
    return rules;
  }
};

}  // namespace

bool IsSketchedCurve(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kCurve;
}

const FeatureKind& SketchedCurve() {
  static const SketchedCurveKind kind;
  return kind;
}

}  // namespace bench

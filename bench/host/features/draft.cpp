// The draft: faces that tilt about hinges, by one angle for all.
#include <cmath>
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/item_collection.h"

namespace bench {
namespace {

constexpr int kDraft = 927;
constexpr double kLargestAngleDeg = 30;

constexpr std::initializer_list<int> kToFaces = {2213};
constexpr std::initializer_list<int> kToDirection = {3252, 3253};
constexpr std::initializer_list<int> kToHinges = {2164, 2124};
constexpr std::initializer_list<int> kToAngle = {2164, 2168};

class DraftKind : public FeatureKind {
 public:
  ProFeattype Type(const ElementNode&) const override { return kDraft; }

  std::vector<DimensionRule> Dimensions() const override { return {{kToAngle, true}}; }

  nlohmann::json Recipe(const Feature& feature, const Model& model) const override {
    const ElementNode& tree = *feature.tree;
    return {{"kind", "draft"},
            {"faces", CollectedKeys(model, tree, kToFaces)},
            {"hinges", CollectedKeys(model, tree, kToHinges)},
            {"direction", KeyOf(model, ItemsAt(tree, kToDirection).front())},
            {"angle_deg", DoubleAt(tree, kToAngle)}};
  }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kDraft}},
        {{3305}, true, {0}},
        {{2154}, true, {0}},
        {kToFaces},
        {{3252}},
        {kToDirection},
        {{3252, 3254}, true, {1}},
        {{2150}, true, {1}},
        {{3177}, true, {1}},
        {{2164}},
        {{2164, 2167}, true, {2}},
        {kToHinges},
        {{2164, 2171}, true, {0}},
        {kToAngle},
    };
    return rules;
  }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    if (!(std::abs(DoubleAt(tree, kToAngle)) <= kLargestAngleDeg))
      return TreeProblem{2168, "must be between -30 and 30 degrees"};
    if (ItemsAt(tree, kToDirection).front().type != PRO_EDGE) return TreeProblem{3253, "is no edge"};
    if (auto problem = CheckFaces(tree, kToFaces)) return problem;
    return CheckEdges(tree, kToHinges, RunningOn::kRefused);
  }
};

}  // namespace

bool IsDraft(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kDraft;
}

const FeatureKind& Draft() {
  static const DraftKind kind;
  return kind;
}

}  // namespace bench

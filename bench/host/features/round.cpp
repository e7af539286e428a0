// The round: one set of edges, one constant radius.
#include <cmath>
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/item_collection.h"

namespace bench {
namespace {

constexpr int kRound = 913;

constexpr std::initializer_list<int> kToEdges = {2101, 2102, 2121, 2124};
constexpr std::initializer_list<int> kToRadius = {2101, 2102, 2123, 2122, 2106, 2109};

class RoundKind : public FeatureKind {
 public:
  ProFeattype Type(const ElementNode&) const override { return kRound; }

  std::vector<DimensionRule> Dimensions() const override { return {{kToRadius}}; }

  nlohmann::json Recipe(const Feature& feature, const Model& model) const override {
    const ElementNode& tree = *feature.tree;
    return {{"kind", "round"},
            {"edges", CollectedKeys(model, tree, kToEdges)},
            {"runs_on", RunsOn(tree, kToEdges)},
            {"radius", DoubleAt(tree, kToRadius) * MillimetresPer(model.length_unit)}};
  }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kRound}},
        {{2101}},
        {{2101, 2102}},
        {{2101, 2102, 2178}, true, {0}},
        {{2101, 2102, 2177}},
        {{2101, 2102, 2177, 2119}, true, {2}},
        {{2101, 2102, 2121}},
        {{2101, 2102, 2121, 2179}, true, {1}},
        {kToEdges},
        {{2101, 2102, 2123}},
        {{2101, 2102, 2123, 2122}},
        {{2101, 2102, 2123, 2122, 2106}},
        {{2101, 2102, 2123, 2122, 2106, 2108}, true, {1}},
        {kToRadius},
        {{3042}, true, {0}},
    };
    return rules;
  }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    const double radius = DoubleAt(tree, kToRadius);
    if (!(radius > 0) || !std::isfinite(radius)) return TreeProblem{2109, "must be above 0"};
    return CheckEdges(tree, kToEdges, RunningOn::kTaken);
  }
};

}  // namespace

bool IsRound(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kRound;
}

const FeatureKind& Round() {
  static const RoundKind kind;
  return kind;
}

}  // namespace bench

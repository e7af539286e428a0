// The shell: the body hollowed to walls of one thickness, open where faces are removed.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"

namespace bench {
namespace {

constexpr int kShell = 928;
constexpr int kRemovedFaces = 73;
constexpr int kThickness = 74;
constexpr int kInward = 1;

class ShellKind : public FeatureKind {
 public:
  ProFeattype Type(const ElementNode&) const override { return kShell; }

  std::optional<TreeProblem> Place(Model& model, Feature& feature) const override {
    if (auto problem = FeatureKind::Place(model, feature)) return problem;
    for (const ItemReference& item : ItemsAt(*feature.tree, {kRemovedFaces}))
      if (item.type != PRO_SURFACE || KeyOf(model, item).empty())
        return TreeProblem{kRemovedFaces, "refers to what is no face of the body"};
    return std::nullopt;
  }

  std::vector<DimensionRule> Dimensions() const override { return {{{74}}}; }

  nlohmann::json Recipe(const Feature& feature, const Model& model) const override {
    // A face that is named twice counts once.
    auto removed = KeysOf(model, ItemsAt(*feature.tree, {kRemovedFaces}));
    std::ranges::sort(removed);
    const auto again = std::ranges::unique(removed);
    removed.erase(again.begin(), again.end());
    return {{"kind", "shell"},
            {"thickness", DoubleAt(*feature.tree, {kThickness}) * MillimetresPer(model.length_unit)},
            {"removed", std::move(removed)}};
  }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kShell}},
        {{73}, false},
        {{74}},
        {{2194}, true, {kInward}},
    };
    return rules;
  }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    if (!(DoubleAt(tree, {kThickness}) > 0)) return TreeProblem{kThickness, "must be above 0"};
    return std::nullopt;
  }
};

}  // namespace

bool IsShell(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kShell;
}

const FeatureKind& Shell() {
  static const ShellKind kind;
  return kind;
}

}  // namespace bench

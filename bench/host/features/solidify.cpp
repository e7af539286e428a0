// The solidify: what a quilt bounds becomes part of the solid.
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"

namespace bench {
namespace {

constexpr ProFeattype kProtrusion = 917;
constexpr int kSolidifyForm = 512;
constexpr int kQuilt = 3023;

class SolidifyKind : public FeatureKind {
 public:
  ProFeattype Type(const ElementNode&) const override { return kProtrusion; }

  nlohmann::json Recipe(const Feature& feature, const Model& model) const override {
    return {{"kind", "solidify"}, {"quilt", KeyOf(model, ItemsAt(*feature.tree, {kQuilt}).front())}};
  }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kProtrusion}}, {{388}, true, {kSolidifyForm}}, {{1964}, false}, {{kQuilt}}};
    return rules;
  }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    if (ItemsAt(tree, {kQuilt}).front().type == PRO_QUILT) return std::nullopt;
    return TreeProblem{kQuilt, "refers to what is no quilt"};
  }
};

}  // namespace

bool IsSolidify(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kProtrusion && IntegerAt(tree, {388}) == kSolidifyForm;
}

const FeatureKind& Solidify() {
  static const SolidifyKind kind;
  return kind;
}

}  // namespace bench

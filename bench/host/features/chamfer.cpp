// The chamfer: one set of edges with equal legs, with two of them, or with an angle and a leg.
#include <cmath>
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/item_collection.h"

namespace bench {
namespace {

constexpr int kChamfer = 914;
constexpr int kEqualDistances = 602;
constexpr int kTwoDistances = 603;
constexpr int kAngleAndDistance = 604;

constexpr std::initializer_list<int> kToScheme = {2101, 2102, 2103};
constexpr std::initializer_list<int> kToEdges = {2101, 2102, 2121, 2124};
constexpr std::initializer_list<int> kToReference = {2101, 2102, 2121, 2104};
constexpr std::initializer_list<int> kToFirstLeg = {2101, 2102, 2123, 2122, 2106, 2109};
constexpr std::initializer_list<int> kToSecondLeg = {2101, 2102, 2123, 2122, 2107, 2109};

bool IsLength(double value) {
  return value > 0 && std::isfinite(value);
}

// What the first leg measures is part of the kind: its dimension is a length or an angle.
class ChamferKind : public FeatureKind {
 public:
  explicit ChamferKind(std::vector<int> schemes) : schemes_(std::move(schemes)) {}

  ProFeattype Type(const ElementNode&) const override { return kChamfer; }

  std::vector<DimensionRule> Dimensions() const override {
    return {{kToFirstLeg, IsAngled()}, {kToSecondLeg}};
  }

  nlohmann::json Recipe(const Feature& feature, const Model& model) const override {
    const double mm = MillimetresPer(model.length_unit);
    const ElementNode& tree = *feature.tree;
    const double first = DoubleAt(tree, kToFirstLeg), second = DoubleAt(tree, kToSecondLeg);
    nlohmann::json recipe{{"kind", "chamfer"},
                          {"edges", CollectedKeys(model, tree, kToEdges)},
                          {"runs_on", RunsOn(tree, kToEdges)}};
    switch (IntegerAt(tree, kToScheme)) {
      case kEqualDistances:
        recipe.update({{"scheme", "equal"}, {"distance", first * mm}});
        return recipe;
      case kTwoDistances:
        recipe.update({{"scheme", "two"}, {"distance", first * mm}, {"distance2", second * mm}});
        break;
      default:
        recipe.update({{"scheme", "angle"}, {"angle_deg", first}, {"distance", second * mm}});
    }
    recipe["reference"] = KeyOf(model, ItemsAt(tree, kToReference).front());
    return recipe;
  }

 protected:
  std::span<const ElementRule> Rules() const override { return rules_; }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    const bool has_two_legs = IntegerAt(tree, kToScheme) != kEqualDistances;
    if ((tree.Find(kToReference) != nullptr) != has_two_legs)
      return TreeProblem{2104, "doesn't fit the scheme"};
    if ((tree.Find(kToSecondLeg) != nullptr) != has_two_legs)
      return TreeProblem{2107, "doesn't fit the scheme"};
    const double first = DoubleAt(tree, kToFirstLeg);
    if (IsAngled() && !(first > 0 && first < 90))
      return TreeProblem{2106, "must be above 0 and below 90 degrees"};
    if (!IsLength(first)) return TreeProblem{2106, "must be above 0"};
    if (has_two_legs && !IsLength(DoubleAt(tree, kToSecondLeg))) return TreeProblem{2107, "must be above 0"};
    if (has_two_legs && ItemsAt(tree, kToReference).front().type != PRO_SURFACE)
      return TreeProblem{2104, "is no surface"};
    return CheckEdges(tree, kToEdges, RunningOn::kTaken);
  }

 private:
  bool IsAngled() const { return schemes_.front() == kAngleAndDistance; }

  std::vector<int> schemes_;
  std::vector<ElementRule> rules_{
      {{387}, true, {kChamfer}},
      {{2101}},
      {{2101, 2102}},
      {kToScheme, true, schemes_},
      {{2101, 2102, 3184}, true, {1}},
      {{2101, 2102, 2121}},
      {kToEdges},
      {kToReference, false},
      {{2101, 2102, 2123}},
      {{2101, 2102, 2123, 2122}},
      {{2101, 2102, 2123, 2122, 2106}},
      {{2101, 2102, 2123, 2122, 2106, 2108}, true, {1}},
      {kToFirstLeg},
      {{2101, 2102, 2123, 2122, 2107}, false},
      {{2101, 2102, 2123, 2122, 2107, 2108}, true, {1}},
      {kToSecondLeg},
      {{3042}, true, {0}},
      {{2113}},
  };
};

bool IsAnyChamfer(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kChamfer;
}

}  // namespace

bool IsChamfer(const ElementNode& tree) {
  return IsAnyChamfer(tree) && IntegerAt(tree, kToScheme) != kAngleAndDistance;
}

const FeatureKind& Chamfer() {
  static const ChamferKind kind({kEqualDistances, kTwoDistances});
  return kind;
}

bool IsAngledChamfer(const ElementNode& tree) {
  return IsAnyChamfer(tree) && IntegerAt(tree, kToScheme) == kAngleAndDistance;
}

const FeatureKind& AngledChamfer() {
  static const ChamferKind kind({kAngleAndDistance});
  return kind;
}

}  // namespace bench

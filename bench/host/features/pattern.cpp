#include "bench/host/features/pattern.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>

#include "bench/host/features/axis.h"
#include "bench/host/features/feature_kind.h"
#include "bench/host/features/local_group.h"
#include "bench/host/features/sketch_plane.h"

namespace bench {
namespace {

using nlohmann::json;

constexpr int kTree = 604;
constexpr int kAlongDirections = 5;
constexpr int kAboutAnAxis = 6;
constexpr int kDirections = 3129;
constexpr int kAxis = 3130;
constexpr int kAxisReference = 3273;
constexpr int kStep = 3276;
constexpr int kWholeAngle = 3297;
constexpr int kDirectionPlane = 3253;
constexpr int kFlip = 3254;

// A pattern of more would keep the kernel at work for minutes.
constexpr int kMostInstances = 1000;

// The elements of a direction: a compound with the plane, the spacing, and the compound with the count.
struct DirectionIds {
  int branch, spacing, counts, count, first_option, second_option;
};
constexpr DirectionIds kFirst{3291, 3274, 3133, 3134, 3307, 4026};
constexpr DirectionIds kSecond{3292, 3275, 3135, 3136, 3308, 4027};

bool HasSecond(const ElementNode& tree) {
  return tree.Find({kDirections, kSecond.branch}) != nullptr;
}

bool IsAboutAxis(const ElementNode& tree) {
  return IntegerAt(tree, {3124}) == kAboutAnAxis;
}

int CountAt(const ElementNode& tree, const DirectionIds& ids, int parent = kDirections) {
  return IntegerAt(tree, {parent, ids.count}, 1);
}

std::optional<TreeProblem> CheckCount(int count, int element) {
  if (count >= 2 && count <= kMostInstances) return std::nullopt;
  return TreeProblem{element, "must be from 2 to " + std::to_string(kMostInstances)};
}

// Whether instances differ at all; NaN is no distance either.
bool IsDistance(double value) {
  return std::abs(value) > 0 && std::isfinite(value);
}

std::optional<TreeProblem> CheckDirection(const ElementNode& tree, const DirectionIds& ids) {
  if (auto problem = CheckCount(CountAt(tree, ids), ids.count)) return problem;
  if (!IsDistance(DoubleAt(tree, {kDirections, ids.spacing}))) return TreeProblem{ids.spacing, "is none"};
  return std::nullopt;
}

std::optional<TreeProblem> CheckDirections(const ElementNode& tree) {
  if (auto problem = CheckDirection(tree, kFirst)) return problem;
  const DirectionIds& ids = kSecond;
  for (const int id : {ids.spacing, ids.counts, ids.count, ids.first_option, ids.second_option})
    if ((tree.Find({kDirections, id}) != nullptr) != HasSecond(tree))
      return TreeProblem{id, "doesn't go with the second direction"};
  if (!HasSecond(tree)) return std::nullopt;
  if (auto problem = CheckDirection(tree, ids)) return problem;
  return CheckCount(CountAt(tree, kFirst) * CountAt(tree, ids), ids.count);
}

// The whole angle is that of all steps.
std::optional<TreeProblem> CheckAngles(const ElementNode& tree) {
  const int count = CountAt(tree, kFirst, kAxis);
  if (auto problem = CheckCount(count, kFirst.count)) return problem;
  const double step = DoubleAt(tree, {kAxis, kStep});
  if (!IsDistance(step)) return TreeProblem{kStep, "is none"};
  const double whole = DoubleAt(tree, {kAxis, kWholeAngle}, step * count);
  constexpr double kRounding = 1e-9;
  if (!(std::abs(whole - step * count) <= kRounding * std::abs(whole)))
    return TreeProblem{kWholeAngle, "isn't what all steps make"};
  return std::nullopt;
}

std::optional<Vector3> DirectionOf(const DirectionIds& ids, Model& model, const Feature& feature) {
  const ElementNode& direction = *feature.tree->Find({kDirections, ids.branch, 3252});
  const auto plane = PlaneReferredTo(*direction.Child(kDirectionPlane), model, feature);
  if (!plane) return std::nullopt;
  const double sign = IntegerAt(direction, {kFlip}) == 1 ? -1 : 1;
  return sign * plane->normal;
}

// A rigid motion as the kernel takes it: the rows of a rotation, each with its part of the translation.
json MotionRecipe(const std::array<Vector3, 3>& rotation, const Vector3& translation) {
  json numbers = json::array();
  for (int row = 0; row < 3; ++row) {
    for (const double number : rotation[row]) numbers.push_back(number + 0.0);
    numbers.push_back(translation[row] + 0.0);
  }
  return numbers;
}

// All steps of both directions but the leader's own place. Lengths in millimetres from here on.
json ShiftsRecipe(const Feature& feature, double mm) {
  const ElementNode& tree = *feature.tree;
  const Vector3 step1 = DoubleAt(tree, {kDirections, kFirst.spacing}) * mm * feature.plane.x;
  const Vector3 step2 = DoubleAt(tree, {kDirections, kSecond.spacing}) * mm * feature.plane.y;
  constexpr std::array<Vector3, 3> kUnturned{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  json motions = json::array();
  for (int j = 0; j < CountAt(tree, kSecond); ++j)
    for (int i = 0; i < CountAt(tree, kFirst); ++i)
      if (i > 0 || j > 0) motions.push_back(MotionRecipe(kUnturned, i * step1 + j * step2));
  return motions;
}

// Right-handed about the axis.
json TurnRecipe(const Vector3& origin, const Vector3& axis, double degrees) {
  const double angle = degrees * std::numbers::pi / 180;
  const double c = std::cos(angle), s = std::sin(angle);
  std::array<Vector3, 3> rotation{};
  for (int column = 0; column < 3; ++column) {
    Vector3 unit{};
    unit[column] = 1;
    const Vector3 image = c * unit + s * Cross(axis, unit) + (1 - c) * Dot(axis, unit) * axis;
    for (int row = 0; row < 3; ++row) rotation[row][column] = image[row];
  }
  const Vector3 image{Dot(rotation[0], origin), Dot(rotation[1], origin), Dot(rotation[2], origin)};
  return MotionRecipe(rotation, origin - image);
}

json TurnsRecipe(const Feature& feature, double mm) {
  const double step = DoubleAt(*feature.tree, {kAxis, kStep});
  json motions = json::array();
  for (int i = 1; i < CountAt(*feature.tree, kFirst, kAxis); ++i)
    motions.push_back(TurnRecipe(mm * feature.plane.origin, feature.plane.Normal(), i * step));
  return motions;
}

std::vector<ElementRule> DirectionRules(const DirectionIds& ids, bool required) {
  return {
      {{kDirections, ids.branch}, required},
      {{kDirections, ids.branch, 3252}},
      {{kDirections, ids.branch, 3252, kDirectionPlane}},
      {{kDirections, ids.branch, 3252, kFlip}, true, {0, 1}},
      {{kDirections, ids.first_option}, required, {0}},
      {{kDirections, ids.second_option}, required, {-1}},
      {{kDirections, ids.spacing}, required},
      {{kDirections, ids.counts}, required},
      {{kDirections, ids.count}, required},
  };
}

std::vector<ElementRule> AllRules() {
  std::vector<ElementRule> rules{
      {{3124}, true, {kAlongDirections, kAboutAnAxis}},
      {{3131}, true, {4}},
      {{kDirections}, false},
      {{kAxis}, false},
      {{kAxis, kAxisReference}},
      {{kAxis, 3309}, true, {0}},
      {{kAxis, kFirst.counts}},
      {{kAxis, kFirst.count}},
      {{kAxis, kStep}},
      {{kAxis, kWholeAngle}, false},
  };
  for (const auto& more : {DirectionRules(kFirst, true), DirectionRules(kSecond, false)})
    rules.insert(rules.end(), more.begin(), more.end());
  return rules;
}

class PatternKind : public FeatureKind {
 public:
  ProFeattype Type(const ElementNode&) const override { return kPattern; }

  bool HasPlane() const override { return true; }

  // The feature's plane is square to the axis, with its origin there; of a pattern along directions, x and y
  // are these, whatever angle is between them.
  std::optional<TreeProblem> Place(Model& model, Feature& feature) const override {
    if (auto problem = FeatureKind::Place(model, feature)) return problem;
    if (feature.members.empty()) return TreeProblem{kTree, "needs a leader"};
    const auto can_be_made = [&](int member) {
      const Feature* made = model.FindFeature(member);
      return made && made->tree;
    };
    if (std::ranges::none_of(feature.members, can_be_made)) return TreeProblem{kTree, "repeats nothing"};
    for (const int member : feature.members)
      if (std::ranges::find(feature.parents, member) == feature.parents.end())
        feature.parents.push_back(member);
    return IsAboutAxis(*feature.tree) ? PlaceAxis(model, feature) : PlaceDirections(model, feature);
  }

  std::vector<DimensionRule> Dimensions() const override {
    return {{{3129, 3274}}, {{3129, 3275}}, {{3130, 3276}, true}};
  }

  json Recipe(const Feature& feature, const Model& model) const override {
    const double mm = MillimetresPer(model.length_unit);
    // A group is there to hold the others, and has nothing that could be repeated.
    json members = json::array();
    for (const auto& each : model.features)
      if (each->tree && std::ranges::find(feature.members, each->id) != feature.members.end())
        members.push_back(each->id);
    return {{"kind", "pattern"},
            {"members", std::move(members)},
            {"motions", IsAboutAxis(*feature.tree) ? TurnsRecipe(feature, mm) : ShiftsRecipe(feature, mm)}};
  }

 protected:
  int Root() const override { return kTree; }

  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules = AllRules();
    return rules;
  }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    const bool about_axis = IsAboutAxis(tree);
    if ((tree.Child(kAxis) != nullptr) != about_axis) return TreeProblem{kAxis, "doesn't go with the kind"};
    if ((tree.Child(kDirections) != nullptr) == about_axis)
      return TreeProblem{kDirections, "doesn't go with the kind"};
    return about_axis ? CheckAngles(tree) : CheckDirections(tree);
  }

 private:
  static std::optional<TreeProblem> PlaceAxis(Model& model, Feature& feature) {
    const auto axis = AxisReferredTo(*feature.tree->Find({kAxis, kAxisReference}), model);
    if (!axis) return TreeProblem{kAxisReference, "is no axis"};
    feature.plane = FrameAcross(axis->origin, axis->direction);
    return std::nullopt;
  }

  static std::optional<TreeProblem> PlaceDirections(Model& model, Feature& feature) {
    const TreeProblem problem{kDirectionPlane, "is no plane that gives a direction"};
    const auto first = DirectionOf(kFirst, model, feature);
    if (!first) return problem;
    feature.plane = {};
    feature.plane.x = *first;
    if (!HasSecond(*feature.tree)) return std::nullopt;
    const auto second = DirectionOf(kSecond, model, feature);
    if (!second) return problem;
    feature.plane.y = *second;
    return std::nullopt;
  }
};

}  // namespace

bool IsPattern(const ElementNode& tree) {
  return tree.id == kTree;
}

const FeatureKind& Pattern() {
  static const PatternKind kind;
  return kind;
}

FeatureOutcome PatternFeature(Model& model, const Feature& leader, ProPatternClass pattern_class,
                              const ElementNode& tree) {
  const std::string who = "feature " + std::to_string(leader.id) + " ";
  if ((pattern_class == PRO_GROUP_PATTERN) != (leader.type == kLocalGroup))
    return Refused(PRO_TK_BAD_INPUTS, leader.id, who + "doesn't fit the pattern's class");
  if (leader.status != PRO_FEAT_ACTIVE || leader.incomplete)
    return Refused(PRO_TK_BAD_CONTEXT, leader.id, who + "is not active");
  if (PatternLedBy(model, leader.id))
    return Refused(PRO_TK_BAD_CONTEXT, leader.id, who + "leads a pattern already");
  if (!IsPattern(tree)) return Refused(PRO_TK_BAD_INPUTS, tree.id, "the tree is no pattern's");
  std::vector<int> members{leader.id};
  if (leader.type == kLocalGroup) members.insert(members.end(), leader.members.begin(), leader.members.end());
  return CreateFeature(model, tree, {}, nullptr, std::move(members));
}

const Feature* PatternLedBy(const Model& model, int leader) {
  for (const auto& feature : model.features)
    if (feature->type == kPattern && feature->members.front() == leader) return feature.get();
  return nullptr;
}

}  // namespace bench

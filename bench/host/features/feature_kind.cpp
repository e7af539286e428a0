#include "bench/host/features/feature_kind.h"

#include <algorithm>
#include <set>

#include "bench/host/model/element_catalog.h"

namespace bench {
namespace {

using Path = std::vector<int>;

bool Holds(const ElementNode& node, ElementKind kind) {
  switch (kind) {
    case ElementKind::kCompound:
      return std::holds_alternative<std::monostate>(node.value);
    case ElementKind::kInteger:
      return std::holds_alternative<int>(node.value);
    case ElementKind::kDouble:
      return std::holds_alternative<double>(node.value);
    case ElementKind::kText:
      return std::holds_alternative<std::wstring>(node.value);
    case ElementKind::kReference: {
      const auto* items = std::get_if<std::vector<ItemReference>>(&node.value);
      return items && items->size() == 1;
    }
    case ElementKind::kReferences:
      return std::holds_alternative<std::vector<ItemReference>>(node.value);
    case ElementKind::kCollection:
      return std::holds_alternative<Collection>(node.value);
    case ElementKind::kMatrix:
      return std::holds_alternative<Matrix>(node.value);
    case ElementKind::kSection:
      return std::holds_alternative<std::shared_ptr<SectionData>>(node.value);
  }
  return false;
}

std::optional<TreeProblem> CheckNode(const ElementNode& node, const ElementRule& rule) {
  const auto kind = KindOfElement(node.id);
  if (rule.may_be_empty && Holds(node, ElementKind::kCompound)) return std::nullopt;
  if (!kind || !Holds(node, *kind)) return TreeProblem{node.id, "has no value of its kind"};
  if (rule.allowed.empty()) return std::nullopt;
  const int value = std::get<int>(node.value);
  if (std::ranges::find(rule.allowed, value) != rule.allowed.end()) return std::nullopt;
  return TreeProblem{node.id, "can't be " + std::to_string(value)};
}

// Checks what stands under `node`, which is at `path`.
std::optional<TreeProblem> CheckChildren(const ElementNode& node, Path& path,
                                         std::span<const ElementRule> rules) {
  std::set<int> seen;
  for (const auto& child : node.children) {
    path.push_back(child->id);
    const auto rule = std::ranges::find(rules, path, &ElementRule::path);
    if (rule == rules.end()) return TreeProblem{child->id, "has no place there"};
    if (!seen.insert(child->id).second && !rule->repeats) return TreeProblem{child->id, "stands there twice"};
    if (auto problem = CheckNode(*child, *rule)) return problem;
    if (auto problem = CheckChildren(*child, path, rules)) return problem;
    path.pop_back();
  }
  for (const ElementRule& rule : rules) {
    const bool is_child =
        rule.path.size() == path.size() + 1 && std::equal(path.begin(), path.end(), rule.path.begin());
    if (is_child && rule.required && !seen.contains(rule.path.back()))
      return TreeProblem{rule.path.back(), "is missing"};
  }
  return std::nullopt;
}

template <typename Value>
Value ValueAt(const ElementNode& tree, std::initializer_list<int> path, Value otherwise) {
  const ElementNode* node = tree.Find(path);
  const auto* value = node ? std::get_if<Value>(&node->value) : nullptr;
  return value ? *value : otherwise;
}

// Whether `owner` is regenerated before `feature`, which may not be in the model yet.
bool StandsBefore(const Model& model, const Feature& owner, const Feature& feature) {
  for (const auto& each : model.features) {
    if (each->id == feature.id) return false;
    if (each.get() == &owner) return true;
  }
  return false;
}

std::optional<TreeProblem> AddParent(int element, const ItemReference& item, Model& model, Feature& feature) {
  const TreeProblem problem{element, "refers to what the feature can't stand on"};
  if (item.owner != &model) return problem;
  const bool is_feature = item.type == PRO_FEATURE;
  const Feature* owner = is_feature ? model.FindFeature(item.id) : model.OwnerOf(item.type, item.id);
  if (!owner || owner->status != PRO_FEAT_ACTIVE || !StandsBefore(model, *owner, feature)) return problem;
  // What a feature that stands was made on, it may have used up.
  const bool is_new = !model.FindFeature(feature.id);
  if (is_new && !is_feature && !model.FindItem(item.type, item.id)->alive) return problem;
  if (std::ranges::find(feature.parents, owner->id) == feature.parents.end())
    feature.parents.push_back(owner->id);
  return std::nullopt;
}

// The owners of all that the tree refers to.
std::optional<TreeProblem> AddParents(const ElementNode& node, Model& model, Feature& feature) {
  std::vector<ItemReference> items;
  if (const auto* references = std::get_if<std::vector<ItemReference>>(&node.value)) items = *references;
  if (const auto* collection = std::get_if<Collection>(&node.value))
    for (const CollectionInstruction& instruction : collection->instructions)
      items.insert(items.end(), instruction.items.begin(), instruction.items.end());
  for (const ItemReference& item : items)
    if (auto problem = AddParent(node.id, item, model, feature)) return problem;
  for (const auto& child : node.children)
    if (auto problem = AddParents(*child, model, feature)) return problem;
  return std::nullopt;
}

}  // namespace

const FeatureKind* FeatureKind::Of(const ElementNode& tree) {
  struct Entry {
    bool (*is)(const ElementNode&);
    const FeatureKind& (*kind)();
  };
  constexpr Entry kKinds[] = {
      {IsSketchedCurve, SketchedCurve},
      {IsExtrude, Extrude},
      {IsRevolve, Revolve},
      {IsRound, Round},
      {IsChamfer, Chamfer},
      {IsAngledChamfer, AngledChamfer},
      {IsDraft, Draft},
      {IsDatumAxis, DatumAxis},
      {IsDatumPlane, DatumPlane},
      {IsPattern, Pattern},
      {IsMirror, Mirror},
      {IsSolidify, Solidify},
      {IsSweep, Sweep},
      {IsShell, Shell},
      {IsHole, Hole},
      {IsMove, Move},
      {IsThread, Thread},
      {IsImported, Imported},
  };
  for (const Entry& entry : kKinds)
    if (entry.is(tree)) return &entry.kind();
  return nullptr;
}

std::span<const int> FeatureKind::SectionPath() const {
  static constexpr int kPath[] = {kSectionElement};
  return kPath;
}

std::optional<TreeProblem> FeatureKind::Place(Model& model, Feature& feature) const {
  feature.parents.clear();
  return AddParents(*feature.tree, model, feature);
}

std::optional<TreeProblem> FeatureKind::Check(const ElementNode& tree) const {
  if (tree.id != Root()) return TreeProblem{tree.id, "is no feature tree"};
  Path path;
  if (auto problem = CheckChildren(tree, path, Rules())) return problem;
  return CheckValues(tree);
}

std::string KeyOf(const Model& model, const ItemReference& item) {
  for (const auto& feature : model.features)
    for (const GeometryItem& each : feature->items)
      if (each.type == item.type && each.id == item.id) return each.key;
  return {};
}

std::vector<std::string> KeysOf(const Model& model, const std::vector<ItemReference>& items) {
  std::vector<std::string> keys;
  for (const ItemReference& item : items) keys.push_back(KeyOf(model, item));
  return keys;
}

std::vector<ItemReference> ItemsAt(const ElementNode& tree, std::initializer_list<int> path) {
  return ValueAt(tree, path, std::vector<ItemReference>{});
}

int IntegerAt(const ElementNode& tree, std::initializer_list<int> path, int otherwise) {
  return ValueAt(tree, path, otherwise);
}

double DoubleAt(const ElementNode& tree, std::initializer_list<int> path, double otherwise) {
  return ValueAt(tree, path, otherwise);
}

}  // namespace bench

#include "bench/host/features/feature_kind.h"

#include <algorithm>
#include <set>

#include "bench/host/model/element_catalog.h"

namespace bench {
namespace {

constexpr int kRoot = 386;

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
    case ElementKind::kSection:
      return std::holds_alternative<std::shared_ptr<SectionData>>(node.value);
  }
  return false;
}

std::optional<TreeProblem> CheckNode(const ElementNode& node, const ElementRule& rule) {
  const auto kind = KindOfElement(node.id);
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
    if (!seen.insert(child->id).second) return TreeProblem{child->id, "stands there twice"};
    path.push_back(child->id);
    const auto rule = std::ranges::find(rules, path, &ElementRule::path);
    if (rule == rules.end()) return TreeProblem{child->id, "has no place there"};
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

}  // namespace

const FeatureKind* FeatureKind::Of(const ElementNode& tree) {
  if (IsSketchedCurve(tree)) return &SketchedCurve();
  if (IsExtrude(tree)) return &Extrude();
  if (IsRevolve(tree)) return &Revolve();
  return nullptr;
}

std::optional<TreeProblem> FeatureKind::Check(const ElementNode& tree) const {
  if (tree.id != kRoot) return TreeProblem{tree.id, "is no feature tree"};
  Path path;
  if (auto problem = CheckChildren(tree, path, Rules())) return problem;
  return CheckValues(tree);
}

int IntegerAt(const ElementNode& tree, std::initializer_list<int> path, int otherwise) {
  return ValueAt(tree, path, otherwise);
}

double DoubleAt(const ElementNode& tree, std::initializer_list<int> path, double otherwise) {
  return ValueAt(tree, path, otherwise);
}

}  // namespace bench

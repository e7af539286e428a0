#include "addin/ops/feature/pattern_trees.h"

namespace vek::feature {
namespace {

// The elements of one direction.
struct DirectionIds {
  int branch;
  int flip;
  int dimension;
  int spacing;
  int instances;
  int count;
};

constexpr DirectionIds kFirstDirection = {3291, 3307, 4026, 3274, 3133, 3134};
constexpr DirectionIds kSecondDirection = {3292, 3308, 4027, 3275, 3135, 3136};

void AddPatternDirection(ElementTreeBuilder& tree, ElementTreeBuilder::Row parent, const DirectionIds& ids,
                         const PatternDirection& direction) {
  tree.OnFailure(L"Failed to populate direction pattern direction branch.");
  const auto branch = tree.Compound(parent, ids.branch);
  const auto reference = tree.Compound(branch, 3252);
  tree.Reference(reference, 3253, direction.plane);
  tree.Integer(reference, 3254, 0);
  tree.Integer(parent, ids.flip, 0);
  tree.Integer(parent, ids.dimension, -1);
  tree.Double(parent, ids.spacing, direction.spacing);
  tree.OnFailure(L"Failed to set direction pattern instance count.");
  tree.Compound(parent, ids.instances);
  tree.Integer(parent, ids.count, direction.count);
}

}  // namespace

ElementTreeBuilder DirectionPatternTree(const PatternDirection& first,
                                        const std::optional<PatternDirection>& second) {
  ElementTreeBuilder tree(604, L"Failed to allocate direction pattern tree.");
  tree.OnFailure(L"Failed to populate direction pattern root.");
  tree.Integer(tree.Root(), 3124, 5);  // pattern by directions
  tree.Integer(tree.Root(), 3131, 4);
  const auto directions = tree.Compound(tree.Root(), 3129);
  AddPatternDirection(tree, directions, kFirstDirection, first);
  if (second) AddPatternDirection(tree, directions, kSecondDirection, *second);
  return tree;
}

ElementTreeBuilder AxisPatternTree(const AxisPatternRecipe& recipe) {
  ElementTreeBuilder tree(604, L"Failed to allocate axis pattern tree.");
  tree.OnFailure(L"Failed to populate axis pattern tree.");
  tree.Integer(tree.Root(), 3124, 6);  // pattern about an axis
  tree.Integer(tree.Root(), 3131, 4);
  const auto axis = tree.Compound(tree.Root(), 3130);
  tree.Reference(axis, 3273, recipe.axis);
  tree.Integer(axis, 3309, 0);
  tree.Compound(axis, 3133);
  tree.Integer(axis, 3134, recipe.count);
  tree.OnFailure(L"Failed to set axis pattern angle increment.");
  tree.Double(axis, 3276, recipe.fit_within_angle ? recipe.angle_deg / recipe.count : recipe.angle_deg);
  tree.OnFailure(L"Failed to set axis pattern whole angle.");
  if (recipe.fit_within_angle) tree.Double(axis, 3297, recipe.angle_deg);
  return tree;
}

}  // namespace vek::feature

#include "bench/host/features/component.h"

#include <utility>

#include "bench/host/features/component_placement.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr int kTreeElement = 386;
constexpr int kFeatureTypeElement = 387;
constexpr int kConstraintsElement = 605;
constexpr int kInitialPositionElement = 611;

void AddChild(ElementNode& parent, int id, ElementNode::Value value) {
  auto child = std::make_unique<ElementNode>();
  child->id = id;
  child->value = std::move(value);
  parent.children.push_back(std::move(child));
}

FeatureOutcome RefusedElement(int element, const std::string& what) {
  return Refused(PRO_TK_GENERAL_ERROR, element, "element " + std::to_string(element) + " " + what);
}

}  // namespace

FeatureOutcome AssembleComponent(Model& assembly, Model& model, const Matrix& place) {
  if (assembly.type != PRO_MDL_ASSEMBLY)
    return Refused(PRO_TK_INVALID_TYPE, -1, "only assemblies take components");
  if (Contains(model, assembly))
    return Refused(PRO_TK_BAD_CONTEXT, -1, ToUtf8(assembly.name) + " can't be placed in itself");
  auto feature = std::make_unique<Feature>();
  feature->id = assembly.next_id++;
  feature->type = kComponentFeature;
  feature->component = std::make_unique<Component>();
  feature->component->model = &model;
  feature->component->name = model.name;
  feature->component->type = model.type;
  feature->component->place = place;
  FeatureOutcome outcome;
  outcome.feature = feature->id;
  assembly.features.push_back(std::move(feature));
  assembly.modified = true;
  return outcome;
}

std::unique_ptr<ElementNode> ComponentTree(const Feature& feature) {
  auto tree = std::make_unique<ElementNode>();
  tree->id = kTreeElement;
  AddChild(*tree, kFeatureTypeElement, kComponentFeature);
  AddChild(*tree, kInitialPositionElement, feature.component->place);
  if (!feature.component->constraints.empty()) AddChild(*tree, kConstraintsElement, std::monostate{});
  return tree;
}

FeatureOutcome RedefineComponent(Model& assembly, Feature& feature, const ElementNode& tree) {
  const ElementNode* type = tree.Child(kFeatureTypeElement);
  const int* number = type ? std::get_if<int>(&type->value) : nullptr;
  if (tree.id != kTreeElement || !number || *number != kComponentFeature)
    return RefusedElement(kFeatureTypeElement, "names another kind of feature");
  const ElementNode* position = tree.Child(kInitialPositionElement);
  const Matrix* matrix = position ? std::get_if<Matrix>(&position->value) : nullptr;
  const auto place = matrix ? PlaceIn(*matrix) : std::nullopt;
  if (!place) return RefusedElement(kInitialPositionElement, "is no place");

  Component& component = *feature.component;
  const Matrix before = std::exchange(component.place, *place);
  const bool keeps_constraints = tree.Child(kConstraintsElement) != nullptr;
  const ProError status = SetConstraints(
      assembly, feature, keeps_constraints ? component.constraints : std::vector<ComponentConstraint>());
  if (status == PRO_TK_NO_ERROR) return {};
  component.place = before;
  return {status, {{feature.id, status}}, -1};
}

}  // namespace bench

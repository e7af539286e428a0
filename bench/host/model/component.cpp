#include "bench/host/model/component.h"

#include <algorithm>
#include <set>

#include "bench/host/host.h"

namespace bench {
namespace {

void CollectPlaced(const Model& assembly, std::vector<Model*>& models) {
  for (const auto& feature : assembly.features) {
    Model* placed = feature->component ? PlacedModel(*feature->component) : nullptr;
    if (!placed || std::ranges::find(models, placed) != models.end()) continue;
    CollectPlaced(*placed, models);
    models.push_back(placed);
  }
}

}  // namespace

Model* PlacedModel(const Component& component) {
  return component.model ? TheHost().session.Find(component.model) : nullptr;
}

std::wstring NameOfPlaced(const Component& component) {
  const Model* model = PlacedModel(component);
  return model ? model->name : component.name;
}

Feature* FindComponent(Model& assembly, int id) {
  Feature* feature = assembly.FindFeature(id);
  return feature && feature->component ? feature : nullptr;
}

std::vector<Feature*> ActiveComponents(const Model& assembly) {
  std::vector<Feature*> active;
  for (const auto& feature : assembly.features)
    if (feature->component && feature->status != PRO_FEAT_SUPPRESSED && PlacedModel(*feature->component))
      active.push_back(feature.get());
  return active;
}

std::optional<PathEnd> Follow(Model& start, std::span<const int> path) {
  PathEnd end{&start};
  for (const int id : path) {
    const Feature* step = end.model ? FindComponent(*end.model, id) : nullptr;
    if (!step) return std::nullopt;
    const Matrix place = Scaled(step->component->place, MillimetresPer(end.model->length_unit));
    end = {PlacedModel(*step->component), Composed(end.place, place)};
  }
  return end;
}

bool Contains(const Model& model, const Model& other) {
  const auto placed = ModelsPlacedIn(model);
  return &model == &other || std::ranges::find(placed, &other) != placed.end();
}

Model* UserOf(const Model& model) {
  for (Model* user : TheHost().session.All())
    for (const auto& feature : user->features)
      if (feature->component && feature->component->model == &model) return user;
  return nullptr;
}

std::vector<Model*> ModelsPlacedIn(const Model& assembly) {
  std::vector<Model*> models;
  CollectPlaced(assembly, models);
  return models;
}

std::vector<int> FeaturesHolding(Model& assembly, const std::vector<ComponentConstraint>& constraints) {
  std::set<int> ids;
  for (const ComponentConstraint& constraint : constraints) {
    if (!constraint.on_assembly) continue;
    const PlacedItem& item = *constraint.on_assembly;
    if (!item.path.empty())
      ids.insert(item.path.front());
    else if (const Feature* owner = assembly.OwnerOf(item.type, item.id))
      ids.insert(owner->id);
  }
  return {ids.begin(), ids.end()};
}

}  // namespace bench

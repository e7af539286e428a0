// Components: what an assembly places, where, and what holds it there.
#pragma once

#include <ProFeature.h>
#include <ProMdl.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "bench/host/model/rigid_place.h"

namespace bench {

struct Feature;
struct Model;

constexpr ProFeattype kComponentFeature = 1000;

// An item by the way to its model: ids of component features, from the assembly down. An empty way leads to
// the model itself.
struct PlacedItem {
  std::vector<int> path;
  ProType type = PRO_TYPE_UNUSED;
  int id = -1;
};

// Which constraint it is, by the toolkit's number, and what it holds to what.
struct ComponentConstraint {
  int type = -1;
  std::optional<PlacedItem> on_assembly;   // its path begins in the assembly
  std::optional<PlacedItem> on_component;  // its path begins in the component's model
  std::optional<double> offset;            // units of the assembly, or degrees of an angle
};

struct Component {
  Model* model = nullptr;  // null for one that could not be found
  std::wstring name;       // of a model that is not there: what it is called
  ProMdlType type = PRO_MDL_PART;
  Matrix place = kNoMove;  // in units of the assembly
  bool placed = false;
  std::vector<ComponentConstraint> constraints;
};

// The model in session that the component places, or null.
Model* PlacedModel(const Component& component);
// Its name, also when it isn't there.
std::wstring NameOfPlaced(const Component& component);

// The component feature of that id, or null.
Feature* FindComponent(Model& assembly, int id);
// The model's components that are neither suppressed nor missing their model.
std::vector<Feature*> ActiveComponents(const Model& assembly);

// Where a path ends.
struct PathEnd {
  Model* model = nullptr;  // null when the last component's isn't there
  Matrix place = kNoMove;  // of the model in the coordinates where the path begins; millimetres
};
// Nothing when the path leads through what isn't there.
std::optional<PathEnd> Follow(Model& start, std::span<const int> path);

// Whether the model is `other`, or places it at any depth.
bool Contains(const Model& model, const Model& other);
// The first assembly in session that places the model itself, or null.
Model* UserOf(const Model& model);
// Every model that the assembly places at any depth, each once, what is deeper first.
std::vector<Model*> ModelsPlacedIn(const Model& assembly);

// The ids of the features that the constraints refer to in the assembly: other components, its own datums.
std::vector<int> FeaturesHolding(Model& assembly, const std::vector<ComponentConstraint>& constraints);

}  // namespace bench

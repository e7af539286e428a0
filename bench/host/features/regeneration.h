// Recipes in, geometry out: what becomes of a model's features.
//
// Whoever changes features works on candidates: Compute asks the kernel what would come of them, and Commit,
// once that is known to be good, makes it the model's. Between the two nothing has changed.
#pragma once

#include <ProObjects.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "bench/host/model/model.h"
#include "bench/host/model/topology.h"

namespace bench {

// What came of a list of features.
struct Geometry {
  struct Item {
    ProType type;
    int feature;
    std::string key;
  };

  // Where a feature lies that lies on geometry: on that of so much of the recipes' text.
  struct Placement {
    std::size_t ground = 0;
    PlaneFrame plane;
    bool operator==(const Placement&) const = default;
  };

  std::string recipes;                  // the recipes, as the kernel was sent them: a JSON array
  std::map<int, Placement> placements;  // per feature
  Topology topology;
  std::vector<Item> items;              // surfaces, edges, curves and points
  std::map<int, std::string> refusals;  // per feature that could not be made: why
};

// What comes of the features that take part, in their order: complete ones with a tree that are not
// suppressed. What lies on geometry lies on that of the features before it, as it comes out now. The kernel
// is asked only for what is not in the model's geometry already. The features are as they were afterwards.
// Null, after a complaint, when the kernel gave no answer or a tree makes no sense, as one of a damaged file
// may.
std::shared_ptr<const Geometry> Compute(Model& model, const std::vector<Feature*>& features);

// The features of a model, as Compute takes them.
std::vector<Feature*> FeaturesOf(const Model& model);

// Makes it the model's: topology, the features' places and items with their ids, and which features failed.
void Commit(Model& model, std::shared_ptr<const Geometry> geometry);

// Those of the refused features that were not known to fail already.
std::set<int> NewlyRefused(const std::vector<Feature*>& features, const Geometry& geometry);

// Regenerates the model; an assembly after the models that it places, and puts its components where they are
// held. A status other than 0 leaves it as it was: the kernel gave no answer, or a feature that stood can't
// be made any more, or a component can't be held.
ProError Regenerate(Model& model);

}  // namespace bench

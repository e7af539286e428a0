// Recipes in, geometry out: what becomes of a model's features.
//
// Whoever changes features works on candidates: Compute asks the kernel what would come of them, and Commit,
// once that is known to be good, makes it the model's. Between the two nothing has changed.
#pragma once

#include <ProObjects.h>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "bench/host/model/model.h"
#include "bench/host/model/topology.h"

namespace bench {

// What came of a list of recipes.
struct Geometry {
  struct Item {
    ProType type;
    int feature;
    std::string key;
  };

  std::string recipes;  // the recipes, as the kernel was sent them
  Topology topology;
  std::vector<Item> items;              // surfaces, edges, curves and points
  std::map<int, std::string> refusals;  // per feature that could not be made: why
};

// The recipes of those features that take part: complete ones with a tree that are not suppressed. A JSON
// array. Nothing, after a complaint, when one has a tree that makes no sense, as a damaged file may give.
std::optional<std::string> RecipesOf(const Model& model, const std::vector<const Feature*>& features);

// What comes of the features, in their order. The kernel is asked only when their recipes are not those that
// the model's geometry came of. Null, after a complaint, when the kernel gave no answer.
std::shared_ptr<const Geometry> Compute(const Model& model, const std::vector<const Feature*>& features);

// The features of a model, as Compute takes them.
std::vector<const Feature*> FeaturesOf(const Model& model);

// Makes it the model's: topology, the features' items with their ids, and which features failed.
void Commit(Model& model, std::shared_ptr<const Geometry> geometry);

// Those of the refused features that were not known to fail already.
std::set<int> NewlyRefused(const std::vector<const Feature*>& features, const Geometry& geometry);

// Regenerates the model. A status other than 0 leaves it as it was: the kernel gave no answer, or a feature
// that stood can't be made any more.
ProError Regenerate(Model& model);

}  // namespace bench

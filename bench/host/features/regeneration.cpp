#include "bench/host/features/regeneration.h"

#include <ProSolid.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <unordered_map>

#include "bench/host/features/dimensions.h"
#include "bench/host/features/feature_kind.h"
#include "bench/host/features/topology_json.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/item_lookup.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr const char* kNoRecipes = "[]";

bool TakesPart(const Feature& feature) {
  return feature.tree && !feature.incomplete && feature.status != PRO_FEAT_SUPPRESSED;
}

int IdOf(Model& model, const std::string& key) {
  const auto [entry, is_new] = model.ids_of_keys.try_emplace(key, model.next_id);
  if (is_new) ++model.next_id;
  return entry->second;
}

// Marks what is gone as dead, what is back as alive, and gives ids to what is new.
void CommitItems(Model& model, const Geometry& geometry) {
  std::unordered_map<int, Feature*> features;
  std::unordered_map<std::string, GeometryItem*> known;
  for (const auto& feature : model.features) {
    features[feature->id] = feature.get();
    for (GeometryItem& item : feature->items) {
      if (item.key.empty()) continue;
      item.alive = false;
      known[item.key] = &item;
    }
  }
  // The items are appended only after the last look at `known`, which points into their lists.
  std::vector<const Geometry::Item*> unknown;
  for (const Geometry::Item& item : geometry.items) {
    const auto found = known.find(item.key);
    if (found == known.end())
      unknown.push_back(&item);
    else
      found->second->alive = true;
  }
  for (const Geometry::Item* item : unknown) {
    const auto owner = features.find(item->feature);
    if (owner == features.end()) continue;
    owner->second->items.push_back({.type = item->type, .id = IdOf(model, item->key), .key = item->key});
  }
}

void CommitStatuses(Model& model, const Geometry& geometry) {
  for (const auto& feature : model.features) {
    if (!TakesPart(*feature)) continue;
    const bool failed = geometry.refusals.contains(feature->id);
    feature->status = failed ? PRO_FEAT_UNREGENERATED : PRO_FEAT_ACTIVE;
  }
}

}  // namespace

std::optional<std::string> RecipesOf(const Model& model, const std::vector<const Feature*>& features) {
  nlohmann::json recipes = nlohmann::json::array();
  for (const Feature* feature : features) {
    if (!TakesPart(*feature)) continue;
    const FeatureKind* kind = FeatureKind::Of(*feature->tree);
    const bool lacks_section = kind && kind->Source() != SectionSource::kNone && !feature->section;
    if (!kind || lacks_section || kind->Check(*feature->tree)) {
      Complain("feature " + std::to_string(feature->id) + " of " + ToUtf8(model.name) + " has no recipe");
      return std::nullopt;
    }
    nlohmann::json recipe = kind->Recipe(*feature, model);
    if (recipe.is_null()) continue;
    recipe["feature"] = feature->id;
    recipes.push_back(std::move(recipe));
  }
  return recipes.dump();
}

std::shared_ptr<const Geometry> Compute(const Model& model, const std::vector<const Feature*>& features) {
  auto recipes = RecipesOf(model, features);
  if (!recipes) return nullptr;
  if (model.geometry && model.geometry->recipes == *recipes) return model.geometry;
  auto geometry = std::make_shared<Geometry>();
  if (*recipes != kNoRecipes) {
    const auto answer = TheHost().kernel.Ask("regenerate", R"("recipes":)" + *recipes);
    if (!answer || !ReadGeometry(*answer, *geometry)) return nullptr;
  }
  geometry->recipes = std::move(*recipes);
  return geometry;
}

std::vector<const Feature*> FeaturesOf(const Model& model) {
  std::vector<const Feature*> features;
  for (const auto& feature : model.features) features.push_back(feature.get());
  return features;
}

void Commit(Model& model, std::shared_ptr<const Geometry> geometry) {
  CommitItems(model, *geometry);
  CommitStatuses(model, *geometry);
  DropDimensionsOfGoneFeatures(model);
  for (const auto& feature : model.features) UpdateDimensions(model, *feature);
  if (model.geometry == geometry) return;
  model.topology = geometry->topology;
  model.geometry = std::move(geometry);
}

std::set<int> NewlyRefused(const std::vector<const Feature*>& features, const Geometry& geometry) {
  std::set<int> refused;
  for (const Feature* feature : features)
    if (feature->status != PRO_FEAT_UNREGENERATED && geometry.refusals.contains(feature->id))
      refused.insert(feature->id);
  return refused;
}

ProError Regenerate(Model& model) {
  const auto features = FeaturesOf(model);
  auto geometry = Compute(model, features);
  if (!geometry) return PRO_TK_COMM_ERROR;
  if (!NewlyRefused(features, *geometry).empty()) return PRO_TK_GENERAL_ERROR;
  Commit(model, std::move(geometry));
  return PRO_TK_NO_ERROR;
}

}  // namespace bench

using namespace bench;

ProError ProSolidRegenerate(ProSolid solid, int flags) {
  HOST_CALL(solid, flags) {
    Model* model = LiveSolid(solid);
    return model ? Regenerate(*model) : PRO_TK_BAD_INPUTS;
  };
}

#include "bench/host/features/regeneration.h"

#include <ProSolid.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <unordered_map>

#include "bench/host/features/component_placement.h"
#include "bench/host/features/dimensions.h"
#include "bench/host/features/feature_kind.h"
#include "bench/host/features/placement.h"
#include "bench/host/features/topology_json.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/item_lookup.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr std::string_view kNoRecipes = "[]";

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

bool AskFor(std::string recipes, Geometry& geometry) {
  if (recipes != kNoRecipes) {
    const auto answer = TheHost().kernel.Ask("regenerate", R"("recipes":)" + recipes);
    if (!answer || !ReadGeometry(*answer, geometry)) return false;
  }
  geometry.recipes = std::move(recipes);
  return true;
}

// The recipes of features, one by one, as text.
class RecipeText {
 public:
  void Add(int feature, const std::string& recipe) {
    starts_.emplace_back(feature, text_.size());
    if (text_.size() > 1) text_ += ',';
    text_ += recipe;
  }

  // How much of the text stands for what is older than the feature of that id.
  std::size_t LengthBefore(int feature) const {
    for (const auto& [id, start] : starts_)
      if (id >= feature) return start;
    return text_.size();
  }

  bool BeginsLike(const std::string& other, std::size_t length) const {
    return other.compare(0, length, text_, 0, length) == 0;
  }

  std::string Array(std::size_t length) const { return text_.substr(0, length) + ']'; }
  std::string Array() const { return text_ + ']'; }

 private:
  std::string text_ = "[";
  std::vector<std::pair<int, std::size_t>> starts_;
};

// The features of a model, taken one after the other.
class Course {
 public:
  explicit Course(Model& model) : model_(model) {}

  // False, after a complaint, when the feature makes no sense, or the kernel doesn't tell what it lies on.
  bool Add(Feature& feature) {
    const FeatureKind* kind = FeatureKind::Of(*feature.tree);
    const bool lacks_section = kind && kind->Source() != SectionSource::kNone && !feature.section;
    if (!kind || lacks_section || kind->Check(*feature.tree)) {
      Complain("feature " + std::to_string(feature.id) + " of " + ToUtf8(model_.name) + " has no recipe");
      return false;
    }
    if (LiesOnGeometry(model_, feature) || LiesOnMadePlanes(model_, feature)) {
      if (!Place(feature)) return false;
      if (geometry_.refusals.contains(feature.id)) return true;
    }
    nlohmann::json recipe = kind->Recipe(feature, model_);
    if (recipe.is_null()) return true;
    recipe["feature"] = feature.id;
    recipes_.Add(feature.id, recipe.dump());
    return true;
  }

  // What comes of them all; null when the kernel doesn't tell.
  std::shared_ptr<const Geometry> End() {
    const auto& known = model_.geometry;
    std::string recipes = recipes_.Array();
    if (!known || known->recipes != recipes) {
      Geometry made;
      if (!AskFor(std::move(recipes), made)) return nullptr;
      made.refusals.merge(geometry_.refusals);
      made.placements = std::move(geometry_.placements);
      return std::make_shared<Geometry>(std::move(made));
    }
    // Datums have places, but no recipes that would tell one from the other.
    if (known->placements == geometry_.placements) return known;
    auto moved = std::make_shared<Geometry>(*known);
    moved->placements = std::move(geometry_.placements);
    return moved;
  }

 private:
  // False when the kernel doesn't tell. A feature that can't lie anywhere is refused.
  bool Place(Feature& feature) {
    const std::size_t ground = recipes_.LengthBefore(PlacedAs(feature));
    if (LiesOnMadePlanes(model_, feature) || !LiesThereAlready(feature, ground)) {
      Topology* topology = LiesOnGeometry(model_, feature) ? TopologyOf(ground) : &model_.topology;
      if (!topology) return false;
      if (const auto problem = PlaceOn(*topology, model_, feature)) {
        geometry_.refusals[feature.id] = "element " + std::to_string(problem->element) + " " + problem->what;
        return true;
      }
    }
    geometry_.placements[feature.id] = {ground, feature.plane};
    return true;
  }

  // Never one that is new or to be exchanged for the one that stands: its place has yet to be tried.
  bool LiesThereAlready(const Feature& feature, std::size_t ground) const {
    if (model_.FindFeature(feature.id) != &feature || feature.status == PRO_FEAT_UNREGENERATED) return false;
    if (!model_.geometry) return false;
    const auto known = model_.geometry->placements.find(feature.id);
    return known != model_.geometry->placements.end() && known->second.ground == ground &&
           recipes_.BeginsLike(model_.geometry->recipes, ground);
  }

  Topology* TopologyOf(std::size_t ground) {
    std::string recipes = recipes_.Array(ground);
    if (model_.geometry && model_.geometry->recipes == recipes) return &model_.topology;
    if (ground_.recipes == recipes) return &ground_.topology;
    ground_ = {};
    return AskFor(std::move(recipes), ground_) ? &ground_.topology : nullptr;
  }

  Model& model_;
  RecipeText recipes_;
  Geometry geometry_;  // what is known of it on the way: placements and refusals
  Geometry ground_;    // what the kernel told last on the way
};

}  // namespace

std::shared_ptr<const Geometry> Compute(Model& model, const std::vector<Feature*>& features) {
  const TriedPlaces places(features);
  Course course(model);
  for (Feature* feature : features)
    if (TakesPart(*feature) && !course.Add(*feature)) return nullptr;
  return course.End();
}

std::vector<Feature*> FeaturesOf(const Model& model) {
  std::vector<Feature*> features;
  for (const auto& feature : model.features) features.push_back(feature.get());
  return features;
}

void Commit(Model& model, std::shared_ptr<const Geometry> geometry) {
  for (const auto& [id, placement] : geometry->placements)
    if (Feature* feature = model.FindFeature(id)) feature->plane = placement.plane;
  CommitItems(model, *geometry);
  CommitStatuses(model, *geometry);
  DropDimensionsOfGoneFeatures(model);
  for (const auto& feature : model.features) UpdateDimensions(model, *feature);
  if (model.geometry == geometry) return;
  model.topology = geometry->topology;
  model.geometry = std::move(geometry);
}

std::set<int> NewlyRefused(const std::vector<Feature*>& features, const Geometry& geometry) {
  std::set<int> refused;
  for (const Feature* feature : features)
    if (feature->status != PRO_FEAT_UNREGENERATED && geometry.refusals.contains(feature->id))
      refused.insert(feature->id);
  return refused;
}

namespace {

ProError RegenerateFeatures(Model& model) {
  const auto features = FeaturesOf(model);
  auto geometry = Compute(model, features);
  if (!geometry) return PRO_TK_COMM_ERROR;
  const std::set<int> refused = NewlyRefused(features, *geometry);
  for (const int id : refused)
    TheHost().announcements.Say("refused: feature " + std::to_string(id) + ": " + geometry->refusals.at(id));
  if (!refused.empty()) return PRO_TK_GENERAL_ERROR;
  Commit(model, std::move(geometry));
  return PRO_TK_NO_ERROR;
}

ProError RegenerateAlone(Model& model) {
  if (model.type != PRO_MDL_ASSEMBLY) return RegenerateFeatures(model);
  // An assembly's own planes come first: components are held to them.
  const bool has_planes =
      std::ranges::any_of(model.features, [](const auto& feature) { return TakesPart(*feature); });
  if (has_planes)
    if (const ProError status = RegenerateFeatures(model)) return status;
  return PlaceComponents(model);
}

}  // namespace

ProError Regenerate(Model& model) {
  // What an assembly places comes first: its faces hold others.
  for (Model* placed : ModelsPlacedIn(model))
    if (const ProError status = RegenerateAlone(*placed)) return status;
  return RegenerateAlone(model);
}

}  // namespace bench

using namespace bench;

ProError ProSolidRegenerate(ProSolid solid, int flags) {
  HOST_CALL(solid, flags) {
    Model* model = LiveSolid(solid);
    return model ? Regenerate(*model) : PRO_TK_BAD_INPUTS;
  };
}

#include "bench/host/features/placement.h"

#include <algorithm>

#include "bench/host/features/sketch_plane.h"

namespace bench {
namespace {

constexpr ProFeattype kDatumPlane = 923;

// A topology that is the model's for a while.
class OnGround {
 public:
  OnGround(Model& model, Topology& ground) : model_(model), ground_(ground) {
    std::swap(model_.topology, ground_);
  }
  OnGround(const OnGround&) = delete;
  OnGround& operator=(const OnGround&) = delete;
  ~OnGround() { std::swap(model_.topology, ground_); }

 private:
  Model& model_;
  Topology& ground_;
};

bool IsGeometry(const Feature& owner) {
  return owner.type != kDatumPlane;
}

bool IsMadePlane(const Feature& owner) {
  return owner.type == kDatumPlane && owner.tree;
}

bool RefersTo(const ElementNode& node, Model& model, bool (*is)(const Feature& owner)) {
  if (const auto* items = std::get_if<std::vector<ItemReference>>(&node.value))
    for (const ItemReference& item : *items) {
      // A point turns nothing: what stands on one follows it by its key, without a question on the way.
      if (item.type == PRO_POINT) continue;
      const Feature* owner = model.OwnerOf(item.type, item.id);
      if (owner && is(*owner)) return true;
    }
  return std::ranges::any_of(node.children, [&](const auto& child) { return RefersTo(*child, model, is); });
}

// The tree that tells where the feature lies; null when none does.
const ElementNode* PlacingTree(const Feature& feature) {
  if (feature.setup) return feature.setup.get();
  return FeatureKind::Of(*feature.tree)->HasPlane() ? feature.tree.get() : nullptr;
}

std::optional<TreeProblem> Place(Model& model, Feature& feature) {
  if (!feature.setup) return FeatureKind::Of(*feature.tree)->Place(model, feature);
  const auto placed = PlaceSketch(*feature.setup, model, feature);
  if (const auto* problem = std::get_if<TreeProblem>(&placed)) return *problem;
  feature.plane = std::get<SketchPlacement>(placed).frame;
  return std::nullopt;
}

}  // namespace

bool LiesOnGeometry(Model& model, const Feature& feature) {
  const ElementNode* tree = PlacingTree(feature);
  return tree && RefersTo(*tree, model, IsGeometry);
}

bool LiesOnMadePlanes(Model& model, const Feature& feature) {
  const ElementNode* tree = PlacingTree(feature);
  return tree && (IsMadePlane(feature) || RefersTo(*tree, model, IsMadePlane));
}

std::optional<TreeProblem> PlaceOn(Topology& ground, Model& model, Feature& feature) {
  if (&ground == &model.topology) return Place(model, feature);
  const OnGround on(model, ground);
  return Place(model, feature);
}

int PlacedAs(const Feature& feature) {
  return feature.setup ? feature.sketch : feature.id;
}

TriedPlaces::TriedPlaces(const std::vector<Feature*>& features) {
  for (Feature* feature : features) before_.push_back({feature, feature->plane, feature->parents});
}

TriedPlaces::~TriedPlaces() {
  for (Place& place : before_) {
    place.feature->plane = place.plane;
    place.feature->parents = std::move(place.parents);
  }
}

}  // namespace bench

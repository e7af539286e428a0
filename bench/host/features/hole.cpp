// The hole: drilled straight from a point of a sketch.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/sketch_plane.h"

namespace bench {
namespace {

constexpr int kHole = 911;
constexpr int kPoint = 1341;
constexpr int kDirectionPlane = 1677;
constexpr int kOrientationPlane = 6051;
constexpr int kOrientation = 6052;

constexpr ProFeattype kSketch = 949;

const ElementNode* PlaneElement(const ElementNode& tree, int id) {
  return tree.Find({1340, id});
}

// The plane and its orientation go together or not at all.
std::optional<TreeProblem> CheckDirection(const ElementNode& tree) {
  const bool has_plane = PlaneElement(tree, kDirectionPlane) != nullptr;
  for (const int id : {kOrientationPlane, kOrientation})
    if ((PlaneElement(tree, id) != nullptr) != has_plane)
      return TreeProblem{id, "doesn't go with the plane of the direction"};
  if (!has_plane) return std::nullopt;
  const ItemReference direction = ItemsAt(tree, {1340, kDirectionPlane}).front();
  const ItemReference orientation = ItemsAt(tree, {1340, kOrientationPlane}).front();
  if (direction.id != orientation.id || direction.type != orientation.type ||
      direction.owner != orientation.owner)
    return TreeProblem{kOrientationPlane, "is another plane than that of the direction"};
  return std::nullopt;
}

class HoleKind : public FeatureKind {
 public:
  ProFeattype Type(const ElementNode&) const override { return kHole; }

  bool HasPlane() const override { return true; }

  std::optional<TreeProblem> Place(Model& model, Feature& feature) const override {
    if (auto problem = FeatureKind::Place(model, feature)) return problem;
    const ElementNode& tree = *feature.tree;
    const ItemReference point = ItemsAt(tree, {1340, kPoint}).front();
    const Feature* sketch = model.OwnerOf(point.type, point.id);
    if (point.type != PRO_POINT || sketch->type != kSketch)
      return TreeProblem{kPoint, "refers to what is no point of a sketch"};
    feature.plane = {};
    const ElementNode* element = PlaneElement(tree, kDirectionPlane);
    if (!element) return std::nullopt;
    const auto plane = PlaneReferredTo(*element, model, feature);
    if (!plane) return TreeProblem{kDirectionPlane, "is no plane that the feature can stand on"};
    feature.plane = FrameAcross(plane->origin, plane->normal);
    return std::nullopt;
  }

  std::vector<DimensionRule> Dimensions() const override { return {{{1671, 82}}, {{1671, 1684, 1686, 434}}}; }

  nlohmann::json Recipe(const Feature& feature, const Model& model) const override {
    const double mm = MillimetresPer(model.length_unit);
    const ElementNode& tree = *feature.tree;
    nlohmann::json recipe{{"kind", "hole"},
                          {"point", KeyOf(model, ItemsAt(tree, {1340, kPoint}).front())},
                          {"diameter", DoubleAt(tree, {1671, 82}) * mm},
                          {"depth", DoubleAt(tree, {1671, 1684, 1686, 434}) * mm}};
    if (PlaneElement(tree, kDirectionPlane)) recipe["direction"] = feature.plane.Normal();
    return recipe;
  }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kHole}},
        {{388}, true, {1}},
        {{1671}},
        {{1671, 1672}, true, {16}},
        {{1671, 3887}, true, {-1}},
        {{1671, 82}},
        {{1671, 1684}},
        {{1671, 1684, 1686}},
        {{1671, 1684, 1686, 1688}, true, {1}},
        {{1671, 1684, 1686, 434}},
        {{1671, 1684, 1685}},
        {{1671, 1684, 1685, 1687}, true, {6}},
        {{1671, 1689}, true, {-1}},
        {{1671, 6053}, true, {-1}},
        {{1340}},
        {{1340, kPoint}},
        {{1340, 696}, true, {4}},
        {{1340, kDirectionPlane}, false},
        {{1340, kOrientationPlane}, false},
        {{1340, kOrientation}, false, {1}},
    };
    return rules;
  }

  std::optional<TreeProblem> CheckValues(const ElementNode& tree) const override {
    if (!(DoubleAt(tree, {1671, 82}) > 0)) return TreeProblem{82, "must be above 0"};
    if (!(DoubleAt(tree, {1671, 1684, 1686, 434}) > 0)) return TreeProblem{434, "must be above 0"};
    return CheckDirection(tree);
  }
};

}  // namespace

bool IsHole(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kHole;
}

const FeatureKind& Hole() {
  static const HoleKind kind;
  return kind;
}

}  // namespace bench

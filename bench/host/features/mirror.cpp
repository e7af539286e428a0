// The geometry mirror: what features own, on the other side of a plane.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "bench/host/features/feature_kind.h"
#include "bench/host/features/section_recipe.h"
#include "bench/host/features/sketch_plane.h"

namespace bench {
namespace {

constexpr ProFeattype kMirror = 950;
constexpr int kItems = 3161;
constexpr int kPlane = 3162;

bool IsDatum(ProType type) {
  return type == PRO_AXIS || type == PRO_CSYS;
}

bool CanBeMirrored(const Model& model, const ItemReference& item) {
  switch (item.type) {
    case PRO_AXIS:
    case PRO_CSYS:
      return true;
    case PRO_SURFACE:
    case PRO_QUILT:
    case PRO_CURVE:
    case PRO_POINT:
      // Datum planes are surfaces too, but none of the kernel's.
      return !KeyOf(model, item).empty();
    default:
      return false;
  }
}

class MirrorKind : public FeatureKind {
 public:
  ProFeattype Type(const ElementNode&) const override { return kMirror; }

  bool HasPlane() const override { return true; }

  std::vector<ProType> Datums(const ElementNode& tree) const override {
    std::vector<ProType> datums;
    for (const ItemReference& item : ItemsAt(tree, {kItems}))
      if (IsDatum(item.type)) datums.push_back(item.type);
    return datums;
  }

  std::optional<TreeProblem> Place(Model& model, Feature& feature) const override {
    if (auto problem = FeatureKind::Place(model, feature)) return problem;
    const auto items = ItemsAt(*feature.tree, {kItems});
    if (!std::ranges::all_of(items, [&](const auto& item) { return CanBeMirrored(model, item); }))
      return TreeProblem{kItems, "holds what can't be mirrored"};
    const auto plane = PlaneReferredTo(*feature.tree->Child(kPlane), model, feature);
    if (!plane) return TreeProblem{kPlane, "is no plane that the feature can stand on"};
    feature.plane = FrameAcross(plane->origin, plane->normal);
    return std::nullopt;
  }

  nlohmann::json Recipe(const Feature& feature, const Model& model) const override {
    const auto items = ItemsAt(*feature.tree, {kItems});
    if (std::ranges::all_of(items, IsDatum, &ItemReference::type)) return nullptr;
    const auto keys = [&](ProType type) {
      nlohmann::json list = nlohmann::json::array();
      for (const ItemReference& item : items)
        if (item.type == type) list.push_back(KeyOf(model, item));
      return list;
    };
    return {{"kind", "mirror"},
            {"plane", PlaneRecipe(feature.plane, MillimetresPer(model.length_unit))},
            {"faces", keys(PRO_SURFACE)},
            {"quilts", keys(PRO_QUILT)},
            {"curves", keys(PRO_CURVE)},
            {"points", keys(PRO_POINT)}};
  }

 protected:
  std::span<const ElementRule> Rules() const override {
    static const std::vector<ElementRule> rules{
        {{387}, true, {kMirror}}, {{1964}, false}, {{3182}, true, {1}}, {{kItems}}, {{kPlane}},
        {{3163}, true, {0}},
    };
    return rules;
  }
};

}  // namespace

bool IsMirror(const ElementNode& tree) {
  return IntegerAt(tree, {387}) == kMirror;
}

const FeatureKind& Mirror() {
  static const MirrorKind kind;
  return kind;
}

}  // namespace bench

#include "bench/host/features/shown_sketches.h"

#include <algorithm>
#include <unordered_set>

#include "bench/host/features/feature_kind.h"

namespace bench {
namespace {

bool IsActive(const Feature& feature) {
  return feature.tree && !feature.incomplete && feature.status == PRO_FEAT_ACTIVE;
}

// Copies leave what they are made of as it is.
bool Copies(const Feature& feature) {
  return IsMirror(*feature.tree) || IsPattern(*feature.tree);
}

bool Draws(const Feature& feature) {
  return IsSketchedCurve(*feature.tree) || Copies(feature);
}

// The features that others have been made of.
std::unordered_set<int> TakenUp(const Model& model) {
  std::unordered_set<int> taken;
  for (const auto& feature : model.features) {
    if (!IsActive(*feature) || Copies(*feature)) continue;
    taken.insert(feature->sketch);
    taken.insert(feature->parents.begin(), feature->parents.end());
  }
  return taken;
}

}  // namespace

std::vector<int> ShownSketches(const Model& model) {
  const std::unordered_set<int> taken = TakenUp(model);
  std::unordered_set<int> hidden;
  std::vector<int> shown;
  for (const auto& feature : model.features) {
    if (!IsActive(*feature) || !Draws(*feature)) continue;
    const bool repeats_hidden =
        IsPattern(*feature->tree) &&
        std::ranges::any_of(feature->members, [&](int member) { return hidden.contains(member); });
    if (taken.contains(feature->id) || repeats_hidden)
      hidden.insert(feature->id);
    else
      shown.push_back(feature->id);
  }
  return shown;
}

}  // namespace bench

#include "bench/host/features/feature_removal.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/host/features/features.h"
#include "bench/host/features/local_group.h"
#include "bench/host/features/regeneration.h"

namespace bench {
namespace {

bool AreKnown(Model& model, const std::set<int>& ids) {
  return std::ranges::all_of(ids, [&](int id) { return model.FindFeature(id) != nullptr; });
}

bool DependsOn(const Feature& feature, const std::set<int>& ids) {
  return std::ranges::any_of(feature.parents, [&](int parent) { return ids.contains(parent); });
}

// The ids together with those of all features that stand on them, directly or not. A component may be held to
// one behind it, so one walk doesn't find all.
std::set<int> WithDependants(const Model& model, std::set<int> ids) {
  for (std::size_t before = 0; before != ids.size();) {
    before = ids.size();
    for (const auto& feature : model.features)
      if (DependsOn(*feature, ids)) ids.insert(feature->id);
  }
  return ids;
}

// The ids together with those of all suppressed features that they stand on.
std::set<int> WithSuppressedParents(const Model& model, std::set<int> ids) {
  for (std::size_t before = 0; before != ids.size();) {
    before = ids.size();
    for (auto feature = model.features.rbegin(); feature != model.features.rend(); ++feature) {
      if (!ids.contains((*feature)->id)) continue;
      for (const int parent : (*feature)->parents) {
        const auto found =
            std::ranges::find(model.features, parent, [](const auto& each) { return each->id; });
        if (found != model.features.end() && (*found)->status == PRO_FEAT_SUPPRESSED) ids.insert(parent);
      }
    }
  }
  return ids;
}

std::vector<Feature*> FeaturesWithout(const Model& model, const std::set<int>& ids) {
  auto features = FeaturesOf(model);
  std::erase_if(features, [&](const Feature* feature) { return ids.contains(feature->id); });
  return features;
}

ProError Refuse(int id, const std::string& what) {
  return Refused(PRO_TK_BAD_CONTEXT, id, "feature " + std::to_string(id) + " " + what).status;
}

// Keys are never given again once their feature is gone; keeping them would only fill the model's files.
void ForgetKeys(Model& model, const Feature& feature) {
  for (const GeometryItem& item : feature.items) model.ids_of_keys.erase(item.key);
}

// Statuses that are tried, and set back unless they are kept.
class TriedStatuses {
 public:
  TriedStatuses(Model& model, const std::set<int>& ids, ProFeatStatus status) {
    for (const auto& feature : model.features) {
      if (!ids.contains(feature->id)) continue;
      before_.emplace_back(feature.get(), feature->status);
      feature->status = status;
    }
  }
  TriedStatuses(const TriedStatuses&) = delete;
  TriedStatuses& operator=(const TriedStatuses&) = delete;
  ~TriedStatuses() {
    for (const auto& [feature, status] : before_) feature->status = status;
  }
  void Keep() { before_.clear(); }

 private:
  std::vector<std::pair<Feature*, ProFeatStatus>> before_;
};

ProError SetStatus(Model& model, const std::set<int>& ids, ProFeatStatus status) {
  TriedStatuses tried(model, ids, status);
  if (const ProError regenerated = Regenerate(model); regenerated != PRO_TK_NO_ERROR) return regenerated;
  tried.Keep();
  model.modified = true;
  return PRO_TK_NO_ERROR;
}

// Those of the features that are, or are not, suppressed.
std::set<int> WhereSuppressed(Model& model, const std::set<int>& ids, bool suppressed) {
  std::set<int> chosen;
  for (const int id : ids)
    if ((model.FindFeature(id)->status == PRO_FEAT_SUPPRESSED) == suppressed) chosen.insert(id);
  return chosen;
}

}  // namespace

ProError DeleteFeatures(Model& model, const std::set<int>& named, bool with_dependants) {
  if (!AreKnown(model, named)) return PRO_TK_E_NOT_FOUND;
  const std::set<int> ids = WithGrouped(model, named);
  std::set<int> doomed = WithDependants(model, ids);
  if (!with_dependants && doomed != ids)
    return Refuse(*ids.begin(), "has dependants and can't be deleted alone");

  std::shared_ptr<const Geometry> geometry;
  for (;;) {
    const auto survivors = FeaturesWithout(model, doomed);
    geometry = Compute(model, survivors);
    if (!geometry) return PRO_TK_COMM_ERROR;
    const auto refused = NewlyRefused(survivors, *geometry);
    if (refused.empty()) break;
    if (!with_dependants)
      return Refuse(*refused.begin(), "can't be made any more: " + geometry->refusals.at(*refused.begin()));
    // A cut refers to no body, yet without one there is nothing to cut: it goes along too.
    doomed.insert(refused.begin(), refused.end());
    doomed = WithDependants(model, std::move(doomed));
  }
  std::erase_if(model.features, [&](const auto& feature) {
    if (!doomed.contains(feature->id)) return false;
    ForgetKeys(model, *feature);
    return true;
  });
  Commit(model, std::move(geometry));
  model.modified = true;
  return PRO_TK_NO_ERROR;
}

ProError SuppressFeatures(Model& model, const std::set<int>& named) {
  if (!AreKnown(model, named)) return PRO_TK_E_NOT_FOUND;
  const std::set<int> ids = WithGrouped(model, named);
  const auto active = WhereSuppressed(model, ids, false);
  if (active.empty()) return PRO_TK_NO_CHANGE;
  for (const int id : WhereSuppressed(model, WithDependants(model, active), false))
    if (!active.contains(id)) return Refuse(id, "is active and depends on what is to be suppressed");
  return SetStatus(model, active, PRO_FEAT_SUPPRESSED);
}

ProError ResumeFeatures(Model& model, const std::set<int>& named, bool with_parents) {
  if (!AreKnown(model, named)) return PRO_TK_E_NOT_FOUND;
  const std::set<int> ids = WithGrouped(model, named);
  const auto suppressed = WhereSuppressed(model, ids, true);
  if (suppressed.empty()) return PRO_TK_NO_CHANGE;
  const auto needed = WithSuppressedParents(model, suppressed);
  if (!with_parents && needed != suppressed) return PRO_TK_SUPP_PARENTS;
  return SetStatus(model, needed, PRO_FEAT_ACTIVE);
}

}  // namespace bench

#include "bench/host/features/local_group.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

namespace bench {
namespace {

bool IsGrouped(const Model& model, int id) {
  return std::ranges::any_of(model.features, [id](const auto& feature) {
    return feature->type == kLocalGroup && std::ranges::find(feature->members, id) != feature->members.end();
  });
}

// Why a feature can't become a member of a group; nothing when it can.
std::optional<std::string> Obstacle(const Model& model, const Feature& feature) {
  if (feature.status != PRO_FEAT_ACTIVE || feature.incomplete) return "is not active";
  if (feature.type == kLocalGroup) return "is a group";
  if (IsGrouped(model, feature.id)) return "is in a group already";
  return std::nullopt;
}

}  // namespace

FeatureOutcome GroupFeatures(Model& model, const std::vector<int>& ids, std::wstring_view name) {
  const std::set<int> wanted(ids.begin(), ids.end());
  if (wanted.size() < 2 || wanted.size() != ids.size())
    return Refused(PRO_TK_BAD_INPUTS, -1, "a group needs two features that differ");
  const auto is_wanted = [&](const auto& feature) { return wanted.contains(feature->id); };
  const auto first = std::ranges::find_if(model.features, is_wanted);
  const auto end = std::find_if_not(first, model.features.end(), is_wanted);
  if (end - first != std::ssize(wanted))
    return Refused(PRO_TK_BAD_CONTEXT, *wanted.begin(), "the features of a group must follow each other");

  auto group = std::make_unique<Feature>();
  for (auto each = first; each != end; ++each) {
    if (const auto obstacle = Obstacle(model, **each))
      return Refused(PRO_TK_BAD_CONTEXT, (*each)->id,
                     "feature " + std::to_string((*each)->id) + " " + *obstacle);
    group->members.push_back((*each)->id);
  }
  group->id = model.next_id++;
  group->type = kLocalGroup;
  group->name = NameIfFree(model, name);
  group->parents = group->members;
  FeatureOutcome outcome;
  outcome.feature = group->id;
  model.features.insert(end, std::move(group));
  model.modified = true;
  return outcome;
}

std::set<int> WithGrouped(const Model& model, std::set<int> ids) {
  for (const auto& feature : model.features)
    if (feature->type == kLocalGroup && ids.contains(feature->id))
      ids.insert(feature->members.begin(), feature->members.end());
  return ids;
}

}  // namespace bench

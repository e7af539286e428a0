#include "addin/ops/feature/patterns.h"

#include <ProPattern.h>
#include <ProWindows.h>

#include <cmath>
#include <limits>
#include <optional>

#include "addin/host/owned.h"
#include "addin/host/text_buffer.h"
#include "addin/ops/common/history.h"
#include "addin/ops/common/units.h"
#include "addin/ops/feature/frame.h"
#include "addin/ops/feature/pattern_directions.h"
#include "addin/ops/feature/pattern_trees.h"
#include "addin/platform/log.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"

namespace vek::feature {
namespace {

constexpr const wchar_t* kGroupName = L"VEK_PATTERN_GROUP";
constexpr int kSmallestCount = 2;
constexpr double kWholeNumberTolerance = 1e-9;

constexpr int kFeatureLeads = 0;
constexpr int kGroupLeads = 1;

// What a pattern repeats: there is one leader, so several features are led by their group.
struct PatternLeader {
  ProFeature feature{};
  int leader_class = kFeatureLeads;
};

// A group that was made stays in the part, whatever becomes of the pattern.
CreoMcpOperationResult MakePatternLeader(ProMdl model, const std::vector<ProFeature>& features,
                                         PatternLeader& leader) {
  if (features.size() == 1) {
    leader = {features.front(), kFeatureLeads};
    return MakeSuccessResult();
  }
  const int count = static_cast<int>(features.size());
  OwnedArray<int> ids;
  if (ids.Allocate(count) != PRO_TK_NO_ERROR || !ids)
    return MakeFailureResult(L"Failed to allocate feature id array for group.");
  for (int i = 0; i < count; ++i) ids[i] = features[i].id;

  ProName name{};
  CopyCut(name, kGroupName);
  ProGroup group{};
  const ProError status = ProLocalGroupCreate(static_cast<ProSolid>(model), ids.get(), count, name, &group);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(
        Format(L"Could not group %u features for a single pattern (status=%d). Creo local groups require "
               L"contiguous features in the regen list. Pattern one feature at a time, or group them in the "
               L"UI first.",
               static_cast<unsigned>(count), status));
  leader = {group, kGroupLeads};
  return MakeSuccessResult();
}

// `name` is the kind of pattern, for message and log. A pattern whose handle can't be had stays in the part.
CreoMcpOperationResult CreatePattern(ProMdl model, const PatternLeader& leader,
                                     const ElementTreeBuilder& tree, const std::wstring& name,
                                     ProPattern& pattern) {
  if (!tree.ok()) return MakeFailureResult(tree.message());
  ProFeature feature = leader.feature;
  const auto leader_class = static_cast<ProPatternClass>(leader.leader_class);
  const ProError status = ProPatternCreate(&feature, leader_class, tree.tree());
  LogOperation(Format(L"Pattern Create [%s]: status=%d leaderId=%d class=%d", name, status, feature.id,
                      leader.leader_class));
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Creo could not create the %s pattern (status=%d).", name, status));
  if (ProFeaturePatternGet(&feature, leader_class, &pattern) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Pattern was created but its pattern handle could not be resolved.");
  ProSolidRegenerate(static_cast<ProSolid>(model), 0);
  ProWindowRepaint(kCurrentWindow);
  return MakeSuccessResult();
}

// A required count of instances. A number this close above a whole one counts as it.
CreoMcpOperationResult ReadInstanceCount(const std::wstring& arguments, const std::wstring& key, int& count) {
  double number = 0;
  if (!JsonReadNumber(arguments, key, number)) return MakeFailureResult(Format(L"'%s' is required.", key));
  const double whole = std::trunc(number);
  if (!(whole >= kSmallestCount) || !(whole <= std::numeric_limits<int>::max()) ||
      !(std::fabs(number - whole) <= kWholeNumberTolerance))
    return MakeFailureResult(Format(L"'%s' must be an integer >= %d.", key, kSmallestCount));
  count = static_cast<int>(whole);
  return MakeSuccessResult();
}

// The arguments of a rectangular pattern. Without a second direction its count is 1 and its spacing 0.
struct RectangularArguments {
  std::vector<std::wstring> feature_names;
  std::wstring x_direction;
  int x_count = 0;
  double x_spacing_mm = 0;
  std::wstring y_direction;
  int y_count = 1;
  double y_spacing_mm = 0;

  bool HasSecondDirection() const { return y_count > 1; }
};

// The second direction is used when it is named and has more than one instance.
void ReadSecondDirection(const std::wstring& arguments, RectangularArguments& read) {
  read.y_direction = JsonReadStringArgument(arguments, L"y_direction");
  double spacing_mm = 0, count = 1;
  JsonReadNumber(arguments, L"y_spacing_mm", spacing_mm);
  JsonReadNumber(arguments, L"y_count", count);
  if (read.y_direction.empty() || !(std::trunc(count) > 1)) return;
  read.y_spacing_mm = spacing_mm;
  // More than an integer holds is more than the host takes.
  constexpr double kMost = std::numeric_limits<int>::max();
  read.y_count = static_cast<int>(std::fmin(std::trunc(count), kMost));
}

CreoMcpOperationResult ReadRectangularArguments(const std::wstring& arguments, RectangularArguments& read) {
  JsonReadStringArray(arguments, L"feature_names", read.feature_names);
  read.x_direction = JsonReadStringArgument(arguments, L"x_direction");
  if (auto counted = ReadInstanceCount(arguments, L"x_count", read.x_count); !counted.success) return counted;
  if (!JsonReadNumber(arguments, L"x_spacing_mm", read.x_spacing_mm))
    return MakeFailureResult(L"'x_spacing_mm' is required.");
  ReadSecondDirection(arguments, read);
  return MakeSuccessResult();
}

CreoMcpOperationResult PatternRectangular(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;

  RectangularArguments read;
  if (auto result = ReadRectangularArguments(arguments, read); !result.success) return result;
  std::vector<ProFeature> features;
  if (auto found = ResolvePatternFeatures(model, read.feature_names, features); !found.success) return found;

  PatternDirection first;
  if (auto found = ResolveDirection(model, read.x_direction, first.plane); !found.success) return found;
  std::optional<PatternDirection> second;
  if (read.HasSecondDirection()) {
    second.emplace();
    if (auto found = ResolveDirection(model, read.y_direction, second->plane); !found.success) return found;
  }
  PatternLeader leader;
  if (auto made = MakePatternLeader(model, features, leader); !made.success) return made;

  first.count = read.x_count;
  first.spacing = MmToModel(model, read.x_spacing_mm);
  if (second) {
    second->count = read.y_count;
    second->spacing = MmToModel(model, read.y_spacing_mm);
  }
  const ElementTreeBuilder tree = DirectionPatternTree(first, second);
  ProPattern pattern{};
  auto created = CreatePattern(model, leader, tree, L"rectangular", pattern);
  if (!created.success) return created;
  const std::wstring name = AssignFeatureName(model, pattern, L"Pattern");
  return PatternSucceeded(
      name, Format(L"Rectangular pattern '%s' created: %dx%d, spacing %.3g mm / %.3g mm.", name, read.x_count,
                   read.y_count, read.x_spacing_mm, read.y_spacing_mm));
}

CreoMcpOperationResult PatternCircular(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;

  std::vector<std::wstring> feature_names;
  JsonReadStringArray(arguments, L"feature_names", feature_names);
  const std::wstring axis = JsonReadStringArgument(arguments, L"axis");
  AxisPatternRecipe recipe;
  if (auto counted = ReadInstanceCount(arguments, L"count", recipe.count); !counted.success) return counted;
  recipe.angle_deg = 360;
  JsonReadNumber(arguments, L"angle_deg", recipe.angle_deg);
  recipe.fit_within_angle = JsonReadBool(arguments, L"fit_within_angle", true);

  std::vector<ProFeature> features;
  if (auto found = ResolvePatternFeatures(model, feature_names, features); !found.success) return found;
  PatternLeader leader;
  if (auto made = MakePatternLeader(model, features, leader); !made.success) return made;
  if (auto found = ResolvePatternAxis(model, axis, recipe.axis); !found.success) return found;

  const ElementTreeBuilder tree = AxisPatternTree(recipe);
  ProPattern pattern{};
  auto created = CreatePattern(model, leader, tree, L"circular", pattern);
  if (!created.success) return created;
  const std::wstring name = AssignFeatureName(model, pattern, L"Pattern");
  return PatternSucceeded(name, Format(L"Circular pattern '%s' created: %d instances around %s, %.3g deg.",
                                       name, recipe.count, axis, recipe.angle_deg));
}

}  // namespace

CreoMcpOperationResult ResolvePatternFeatures(ProMdl model, const std::vector<std::wstring>& names,
                                              std::vector<ProFeature>& features) {
  features.clear();
  for (const std::wstring& name : names) {
    if (name.empty()) continue;
    FeatureInfo info;
    if (auto found = FeatureLookup(model, name, info, false); !found.success) return found;
    features.push_back(info.feature);
  }
  if (features.empty()) return MakeFailureResult(L"'feature_names' must contain at least one feature.");
  return MakeSuccessResult();
}

CreoMcpOperationResult PatternSucceeded(const std::wstring& name, const std::wstring& message) {
  LogOperation(L"CreoMcpPattern: " + message);
  PushCreateFeature(name);
  return MakeSuccessResult(message, FeatureNameData(name));
}

void RegisterPatternOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_pattern_rectangular", PatternRectangular);
  provider.RegisterOperation(L"api_pattern_circular", PatternCircular);
}

}  // namespace vek::feature

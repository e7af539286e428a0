#include "addin/ops/feature/sweep.h"

#include <ProWindows.h>

#include <optional>

#include "addin/ops/common/history.h"
#include "addin/ops/feature/creation.h"
#include "addin/ops/feature/frame.h"
#include "addin/ops/feature/pattern_directions.h"
#include "addin/ops/feature/section_access.h"
#include "addin/ops/feature/sweep_run.h"
#include "addin/ops/feature/sweep_trajectory.h"
#include "addin/platform/log.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"

namespace vek::feature {

ElementTreeBuilder SweepTree(OwnedCollection& trajectory, bool is_cut) {
  ElementTreeBuilder tree(386, L"Failed to allocate sweep element tree.");
  const auto root = tree.Root();
  tree.OnFailure(L"Failed to populate sweep element tree.");
  // The form alone says what the feature is: the tree has no feature type.
  tree.Integer(root, 388, 4);
  tree.Integer(root, 5528, 128);
  const auto frame = tree.Compound(root, 3165);
  const auto trajectories = tree.Compound(frame, 1176);
  const auto origin = tree.Compound(trajectories, 15);
  tree.Integer(origin, 725, 26);  // the trajectory is selected
  const auto curves = tree.Compound(origin, 726);
  tree.Collection(curves, 2124, trajectory);
  const auto start = tree.Compound(frame, 1159);
  tree.Integer(start, 1170, 0);
  tree.Integer(start, 1171, 1);
  tree.Integer(start, 1649, 0);  // the host's own start direction
  const auto section = tree.Compound(root, 3164);
  tree.Integer(section, 1168, 8388608);
  tree.Compound(section, 897);
  tree.Text(root, 1964, L"SWEEP");
  tree.Integer(root, 1956, 917);                // solid type
  tree.Integer(root, 2023, is_cut ? 916 : -1);  // material removal
  tree.Integer(root, 3176, 0);                  // not thin
  if (is_cut) tree.Integer(root, 499, 1);       // the side that is removed
  return tree;
}

namespace {

constexpr int kIncompleteOption = 2;

// The datum plane that can give a section its start direction.
std::optional<ProModelitem> FindStartPlane(ProMdl model) {
  for (const wchar_t* const word : {L"TOP", L"RIGHT", L"FRONT"}) {
    ProModelitem item{};
    if (FindDatumPlane(model, word, item)) return item;
  }
  return std::nullopt;
}

struct SweepArguments {
  SweepRequest names;
  bool is_cut = false;
};

CreoMcpOperationResult ReadArguments(const std::wstring& arguments, SweepArguments& sweep) {
  sweep.names.profile_name = JsonReadStringArgument(arguments, L"profile_sketch_name");
  sweep.names.path_name = JsonReadStringArgument(arguments, L"path_sketch_name");
  if (sweep.names.profile_name.empty() || sweep.names.path_name.empty())
    return MakeFailureResult(L"'profile_sketch_name' and 'path_sketch_name' are required.");
  std::wstring refusal;
  if (!ParseFeatureOperation(arguments, sweep.is_cut, refusal)) return MakeFailureResult(refusal);
  return MakeSuccessResult();
}

// What one sweep holds of the host's, given back from the last member to the first.
struct SweepHoldings {
  OwnedReferences references;
  OwnedCollection trajectory;
  std::optional<ElementTreeBuilder> tree;
  ExtractedTree profile_tree;
  ProSection profile = nullptr;
};

CreoMcpOperationResult CreateIncompleteFeature(ProMdl model, bool is_cut, SweepHoldings& holdings,
                                               ProFeature& feature) {
  // The host allows a collection that a tree has taken over to be freed by its maker all the same.
  OwnedCollection lent(holdings.trajectory.get());
  holdings.tree.emplace(SweepTree(lent, is_cut));
  lent.release();
  if (!holdings.tree->ok()) return MakeFailureResult(holdings.tree->message());
  auto created = CreateFeatureFromTree(model, holdings.tree->tree(), kIncompleteOption, L"sweep", feature,
                                       /*regenerate=*/false);
  holdings.tree->FreeTree();
  return created;
}

void DeleteFeature(ProMdl model, const ProFeature& feature) {
  int id = feature.id;
  if (id >= 0) ProFeatureDelete(static_cast<ProSolid>(model), &id, 1, nullptr, 0);
}

CreoMcpOperationResult FinishSweep(ProMdl model, const ProFeature& feature, const SweepRequest& names) {
  ProSolidRegenerate(static_cast<ProSolid>(model), 0);
  ProWindowRepaint(kCurrentWindow);
  const std::wstring name = AssignFeatureName(model, feature, L"Sweep");
  PushCreateFeature(name);
  return MakeSuccessResult(Format(L"Sweep '%s' created (profile '%s' along path '%s').", name,
                                  names.profile_name, names.path_name),
                           FeatureNameData(name));
}

CreoMcpOperationResult FeatureSweep(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;
  SweepArguments sweep;
  if (auto read = ReadArguments(arguments, sweep); !read.success) return read;
  FeatureInfo profile, path;
  if (auto found = FeatureLookup(model, sweep.names.profile_name, profile, true); !found.success)
    return found;
  if (auto found = FeatureLookup(model, sweep.names.path_name, path, true); !found.success) return found;

  SweepHoldings holdings;
  const ProError status = ExtractFeatureSection(profile.feature, holdings.profile_tree, holdings.profile);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to extract the sweep profile section from '%s' (status=%d).",
                                    sweep.names.profile_name, status));
  const auto start_plane = FindStartPlane(model);
  if (!BuildTrajectoryCollection(path.feature, holdings.trajectory, holdings.references))
    return MakeFailureResult(L"Failed to collect curves from the path sketch for the sweep trajectory.");
  ProFeature feature{};
  if (auto created = CreateIncompleteFeature(model, sweep.is_cut, holdings, feature); !created.success)
    return created;

  SweepRun run(model, feature, holdings.profile, start_plane, holdings.references);
  if (auto completed = run.Complete(sweep.names); !completed.success) {
    run.FreeTree();
    DeleteFeature(model, feature);
    return completed;
  }
  return FinishSweep(model, feature, sweep.names);
}

CreoMcpOperationResult FeatureLoft(const std::wstring&) {
  LogOperation(L"Feature Loft: unavailable.");
  return MakeFailureResult(L"api_feature_loft is unavailable on Creo.");
}

}  // namespace

void RegisterSweepOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_feature_sweep", FeatureSweep);
  provider.RegisterOperation(L"api_feature_loft", FeatureLoft);
}

}  // namespace vek::feature

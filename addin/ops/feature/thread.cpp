#include "addin/ops/feature/thread.h"

#include <ProGeomitem.h>

#include <vector>

#include "addin/host/element_tree_builder.h"
#include "addin/host/extracted_tree.h"
#include "addin/ops/common/history.h"
#include "addin/ops/common/units.h"
#include "addin/ops/feature/creation.h"
#include "addin/ops/feature/hole_charts.h"
#include "addin/ops/feature/thread_lookup.h"
#include "addin/ops/feature/thread_starts.h"
#include "addin/platform/log.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"

namespace vek::feature {
namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kSmallestLength = 1e-9;     // below it a length counts as none
constexpr double kSmallestDiameter = 1e-12;  // by which nothing is divided
constexpr double kLengthWithoutMeasureMm = 1.0;
constexpr int kHoleDepthPath[] = {1671, 1684, 1686, 434};
constexpr int kPlainOption = 0;
constexpr int kUndoOption = 6;

constexpr const wchar_t* kSeries = L"ISO";
constexpr const wchar_t* kThreadName = L"COSMETIC_THREAD";
constexpr const wchar_t* kDesignationRequired = L"'thread_designation' is required (e.g. M8x1.25).";

struct ThreadRecipe {
  ProModelitem surface{};
  ProModelitem start{};
  int series_index = 0;
  int screw_index = 0;
  double diameter = 0;  // model units
  double depth = 0;     // model units
  int standard = 1;
  int flip = 1;
};

ElementTreeBuilder ThreadTree(const ThreadRecipe& recipe) {
  ElementTreeBuilder tree(386, L"Failed to allocate thread element tree.");
  const auto root = tree.Root();
  tree.OnFailure(L"Failed to populate cosmetic thread element tree.");
  tree.Integer(root, 387, 1070);  // feature type: thread
  tree.Integer(root, 388, 1);     // feature form
  tree.Text(root, 1964, kThreadName);
  tree.Integer(root, 4974, recipe.standard);
  tree.Integer(root, 4975, recipe.series_index);
  tree.Integer(root, 4976, recipe.screw_index);
  tree.ReferenceBySelection(root, 4902, recipe.surface);
  tree.Double(root, 4900, recipe.diameter);
  tree.ReferenceBySelection(root, 4901, recipe.start);
  const auto depth = tree.Compound(root, 4903);
  tree.Integer(depth, 4904, 0);
  tree.Integer(depth, 4905, recipe.flip);
  tree.Double(depth, 4906, recipe.depth);
  return tree;
}

// The indices of the designation in the host's charts, from the host itself or from the chart files.
bool ResolveThread(ProMdl model, const std::wstring& designation, ThreadRecipe& recipe,
                   std::wstring& message) {
  if (ResolveThreadByHoleHelper(model, kSeries, designation, recipe.series_index, recipe.screw_index,
                                message))
    return true;
  LogOperation(L"Feature Thread: hole-helper lookup failed: " + message);
  return ResolveThreadByChart(kSeries, designation, recipe.series_index, recipe.screw_index, message);
}

// The surface's own diameter, 0 when it has none.
double SurfaceDiameter(ProSurface surface) {
  ProUvParam uv = {0, 0};
  double diameter = 0;
  return ProSurfaceDiameterEval(surface, uv, &diameter) == PRO_TK_NO_ERROR ? diameter : 0;
}

// The depth with which a hole was made, 0 for any other feature.
double HoleDepth(const ProFeature& feature) {
  ExtractedTree tree;
  ProElement element = nullptr;
  double depth = 0;
  if (tree.Extract(feature) != PRO_TK_NO_ERROR || tree.tree() == nullptr ||
      tree.Follow(kHoleDepthPath, element) != PRO_TK_NO_ERROR ||
      ProElementDoubleGet(element, &depth) != PRO_TK_NO_ERROR)
    return 0;
  return depth;
}

// The length of a whole cylinder, by its area; 0 when that can't be told.
double CylinderLength(ProSurface surface, double diameter) {
  double area = 0;
  if (!(diameter > kSmallestDiameter) || ProSurfaceAreaEval(surface, &area) != PRO_TK_NO_ERROR || !(area > 0))
    return 0;
  return area / (kPi * diameter);
}

double FullDepth(ProMdl model, const FeatureInfo& target, ProSurface surface, double own_diameter,
                 double thread_diameter) {
  if (const double depth = HoleDepth(target.feature); depth > kSmallestLength) return depth;
  const double diameter = own_diameter > 0 ? own_diameter : thread_diameter;
  if (const double length = CylinderLength(surface, diameter); length > 0) return length;
  return MmToModel(model, kLengthWithoutMeasureMm);
}

// One creation, and when the host refuses it, one that it may undo by itself.
CreoMcpOperationResult TryThread(ProMdl model, const ThreadRecipe& recipe, ProFeature& feature) {
  const ElementTreeBuilder tree = ThreadTree(recipe);
  if (!tree.ok()) return MakeFailureResult(tree.message());
  LogOperation(Format(L"Feature Thread: create startId=%d type=%d std=%d flip=%d", recipe.start.id,
                      recipe.start.type, recipe.standard, recipe.flip));
  auto created = CreateFeatureFromTree(model, tree.tree(), kPlainOption, L"thread", feature, true);
  if (created.success) return created;
  return CreateFeatureFromTree(model, tree.tree(), kUndoOption, L"thread-undo", feature, true);
}

// Which start the host takes, whether as a standard thread and in which direction, can only be found out by
// asking: all combinations are tried until one is taken.
CreoMcpOperationResult TryThreads(ProMdl model, ThreadRecipe recipe, const std::vector<ProModelitem>& starts,
                                  ProFeature& feature) {
  auto result = MakeFailureResult(L"Creo could not create the cosmetic thread.");
  for (const ProModelitem& start : starts) {
    recipe.start = start;
    for (const int standard : {1, 0}) {
      recipe.standard = standard;
      for (const int flip : {1, -1}) {
        recipe.flip = flip;
        result = TryThread(model, recipe, feature);
        if (result.success) return result;
      }
    }
  }
  return result;
}

}  // namespace

CreoMcpOperationResult AddCosmeticThread(ProMdl model, const FeatureInfo& target,
                                         const std::wstring& designation_text, bool full_depth,
                                         double length_mm) {
  const std::wstring designation = NormalizeThreadDesignation(designation_text);
  if (designation.empty()) return MakeFailureResult(kDesignationRequired);
  ThreadRecipe recipe;
  std::wstring message;
  if (!ResolveThread(model, designation, recipe, message)) return MakeFailureResult(message);
  LogOperation(Format(L"Feature Thread: series='%s' idx=%d screw='%s' idx=%d", kSeries, recipe.series_index,
                      designation, recipe.screw_index));

  const ProSurface surface = FindThreadSurface(target.feature);
  if (surface == nullptr)
    return MakeFailureResult(
        Format(L"Feature '%s' has no cylindrical surface for a cosmetic thread.", target.name));
  if (ProSurfaceToGeomitem(static_cast<ProSolid>(model), surface, &recipe.surface) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to reference the threaded surface.");
  const std::vector<ProModelitem> starts = FindThreadStarts(model, surface);
  if (starts.empty())
    return MakeFailureResult(L"Failed to find a start surface/edge for the cosmetic thread.");

  const double own_diameter = SurfaceDiameter(surface);
  recipe.diameter = own_diameter;
  if (!(own_diameter > kSmallestLength))
    if (const double told_mm = DesignationDiameter(designation); told_mm > 0)
      recipe.diameter = MmToModel(model, told_mm);
  if (!(recipe.diameter > 0)) return MakeFailureResult(L"Could not determine thread diameter.");
  recipe.depth = full_depth ? FullDepth(model, target, surface, own_diameter, recipe.diameter)
                            : MmToModel(model, length_mm);
  LogOperation(
      Format(L"Feature Thread: target='%s' id=%d desig='%s' seriesIdx=%d screwIdx=%d diam=%.6g depth=%.6g "
             L"cylId=%d startRefs=%u",
             target.name, target.id, designation, recipe.series_index, recipe.screw_index, recipe.diameter,
             recipe.depth, recipe.surface.id, starts.size()));

  ProFeature feature{};
  if (auto created = TryThreads(model, recipe, starts, feature); !created.success) return created;
  const std::wstring name = AssignFeatureName(model, feature, kThreadName);
  PushCreateFeature(name);
  return MakeSuccessResult(Format(L"Cosmetic thread '%s' (%s / %s) created on '%s'%s.", name, kSeries,
                                  designation, target.name, full_depth ? L" (full depth)" : L""),
                           FeatureNameData(name));
}

namespace {

CreoMcpOperationResult FeatureThread(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;

  std::wstring feature_name;
  if (auto named = ReadFeatureName(arguments, feature_name); !named.success) return named;
  const std::wstring designation = JsonReadStringArgument(arguments, L"thread_designation");
  if (designation.empty()) return MakeFailureResult(kDesignationRequired);
  const bool full_depth = JsonReadBool(arguments, L"full_depth", true);
  double length_mm = 0;
  JsonReadNumber(arguments, L"length_mm", length_mm);
  if (!full_depth && !(length_mm > 0))
    return MakeFailureResult(L"'length_mm' is required (and must be > 0) unless 'full_depth' is true.");

  FeatureInfo target;
  if (auto found = FeatureLookup(model, feature_name, target, false); !found.success) return found;
  return AddCosmeticThread(model, target, designation, full_depth, length_mm);
}

}  // namespace

void RegisterThreadOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_feature_thread", FeatureThread);
}

}  // namespace vek::feature

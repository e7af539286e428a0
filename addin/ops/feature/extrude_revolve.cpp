#include "addin/ops/feature/extrude_revolve.h"

#include <cmath>
#include <iterator>

#include "addin/ops/common/history.h"
#include "addin/ops/common/units.h"
#include "addin/ops/feature/creation.h"
#include "addin/ops/feature/frame.h"
#include "addin/ops/feature/revolve_centerline.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::feature {
namespace {

// What the depth element holds in each mode.
struct DepthRow {
  int first_side;   // element 430
  int second_side;  // element 433
  bool has_depth1;
  bool has_depth2;
};

constexpr DepthRow kDepthRows[] = {
    {4096, 262144, true, false},     // blind
    {4096, 268435456, true, false},  // both sides
    {128, 262144, true, true},       // two distances
    {4096, 1048576, false, false},   // through all
    {4096, 524288, false, false},    // to next
};

constexpr double kSmallestTaperDeg = 1e-9;

const DepthRow& DepthRowOf(int depth_mode) {
  const bool known = depth_mode >= 0 && depth_mode < static_cast<int>(std::size(kDepthRows));
  return kDepthRows[known ? depth_mode : kBlind];
}

}  // namespace

ElementTreeBuilder ExtrudeTree(const ExtrudeRecipe& recipe) {
  const DepthRow& depth = DepthRowOf(recipe.depth_mode);

  ElementTreeBuilder tree(386, L"Failed to allocate extrude element tree.");
  const auto root = tree.Root();
  tree.OnFailure(L"Failed to populate extrude feature type elements.");
  tree.Integer(root, 387, 917);                        // feature type: protrusion
  tree.Integer(root, 388, 1);                          // feature form: extrude
  tree.Integer(root, 1956, 917);                       // solid type
  tree.Integer(root, 2023, recipe.is_cut ? 916 : -1);  // material removal
  tree.Integer(root, 3176, 0);                         // not thin
  tree.OnFailure(L"Failed to add extrude section element.");
  tree.Compound(root, 447);  // the section
  tree.OnFailure(L"Failed to set extrude direction.");
  tree.Integer(root, 436, recipe.flip ? 1 : -1);

  tree.OnFailure(L"Failed to build extrude depth compound.");
  const auto depths = tree.Compound(root, 515);
  const auto first_side = tree.Compound(depths, 428);
  const auto second_side = tree.Compound(depths, 429);
  tree.OnFailure(L"Failed to set extrude depth values.");
  tree.Integer(first_side, 430, depth.first_side);
  if (depth.has_depth2) tree.Double(first_side, 431, recipe.depth2);
  tree.Integer(second_side, 433, depth.second_side);
  if (depth.has_depth1) tree.Double(second_side, 434, recipe.depth1);

  tree.OnFailure(L"Failed to add extrude draft compound.");
  const auto draft = tree.Compound(root, 5096);
  if (!(std::fabs(recipe.taper_deg) <= kSmallestTaperDeg)) {  // NaN is for the host to refuse
    tree.OnFailure(L"Failed to set extrude taper angle.");
    tree.Integer(draft, 5097, 80);
    tree.Double(draft, 5098, recipe.taper_deg);
  } else {
    tree.OnFailure(L"Failed to set extrude draft option.");
    tree.Integer(draft, 5097, -1);
  }
  return tree;
}

ElementTreeBuilder RevolveTree(const RevolveRecipe& recipe) {
  ElementTreeBuilder tree(386, L"Failed to allocate revolve element tree.");
  const auto root = tree.Root();
  tree.OnFailure(L"Failed to populate revolve feature type elements.");
  tree.Integer(root, 387, 917);                        // feature type: protrusion
  tree.Integer(root, 388, 2);                          // feature form: revolve
  tree.Integer(root, 1956, 917);                       // solid type
  tree.Integer(root, 2023, recipe.is_cut ? 916 : -1);  // material removal
  tree.Integer(root, 3176, 0);                         // not thin
  tree.OnFailure(L"Failed to add revolve section element.");
  tree.Compound(root, 447);  // the section
  tree.OnFailure(L"Failed to set revolve direction.");
  tree.Integer(root, 436, recipe.negative ? 1 : -1);
  tree.OnFailure(L"Failed to set revolve axis option.");
  tree.Integer(root, 3280, 1);  // the axis is the section's

  tree.OnFailure(L"Failed to set revolve angle.");
  const auto angle = tree.Compound(root, 6);
  const auto first_side = tree.Compound(angle, 437);
  const auto second_side = tree.Compound(angle, 438);
  tree.Integer(first_side, 439, 262144);
  tree.Integer(second_side, 440, 4194304);
  tree.Double(second_side, 442, recipe.angle_deg);
  return tree;
}

namespace {

// The required argument `sketch_name`.
CreoMcpOperationResult ReadSketchName(const std::wstring& arguments, std::wstring& name) {
  name = JsonReadStringArgument(arguments, L"sketch_name");
  if (name.empty()) return MakeFailureResult(L"'sketch_name' is required.");
  return MakeSuccessResult();
}

// Creates the feature from its finished tree, names it and enters it into the history. `name` receives the
// new name.
CreoMcpOperationResult CreateNamedFeature(ProMdl model, ElementTreeBuilder& tree, const FeatureInfo& sketch,
                                          std::wstring_view base, std::wstring& name) {
  if (!tree.ok()) return MakeFailureResult(tree.message());
  ProFeature feature{};
  auto created = CreateSketchedFeature(model, tree.tree(), sketch, feature);
  tree.FreeTree();
  if (!created.success) return created;
  name = AssignFeatureName(model, feature, base);
  PushCreateFeature(name);
  return MakeSuccessResult();
}

// What sets the two extrude operations apart.
struct ExtrudeForm {
  CreoMcpOperationResult (*read_depths)(const std::wstring& arguments, ProMdl model, double distance_mm,
                                        ExtrudeRecipe& recipe);
  std::wstring (*message)(const std::wstring& feature, const std::wstring& sketch);
};

CreoMcpOperationResult ReadTwoDistances(const std::wstring& arguments, ProMdl model, double distance_mm,
                                        ExtrudeRecipe& recipe) {
  double distance2_mm = 0;
  if (!JsonReadNumber(arguments, L"distance2_mm", distance2_mm))
    return MakeFailureResult(L"'distance2_mm' is required.");
  recipe.depth_mode = kTwoDistances;
  recipe.depth1 = MmToModel(model, std::fabs(distance_mm));
  recipe.depth2 = MmToModel(model, std::fabs(distance2_mm));
  recipe.flip = distance_mm < 0;
  return MakeSuccessResult();
}

CreoMcpOperationResult ReadExtent(const std::wstring& arguments, ProMdl model, double distance_mm,
                                  ExtrudeRecipe& recipe) {
  const bool both_sides = JsonReadBool(arguments, L"both_sides", false);
  const std::wstring extent = ToLower(Trim(JsonReadStringArgument(arguments, L"extent_type")));
  if (extent.empty() || extent == L"blind") {
    recipe.depth_mode = both_sides ? kBothSides : kBlind;
    recipe.depth1 = MmToModel(model, std::fabs(distance_mm));
    recipe.flip = !both_sides && distance_mm < 0;
    return MakeSuccessResult();
  }
  if (extent == L"next") {
    recipe.depth_mode = kToNext;
  } else if (extent == L"last" || extent == L"through_all" || extent == L"through-all") {
    recipe.depth_mode = kThroughAll;
  } else {
    return MakeFailureResult(L"Invalid 'extent_type'. Valid values: 'blind', 'next', 'last'.");
  }
  recipe.flip = distance_mm < 0;
  return MakeSuccessResult();
}

CreoMcpOperationResult Extrude(const std::wstring& arguments, const ExtrudeForm& form) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;

  ExtrudeRecipe recipe;
  if (auto named = ReadSketchName(arguments, recipe.sketch_name); !named.success) return named;
  double distance_mm = 0;
  // Of some extents only the sign counts, and what is no number has none.
  if (!JsonReadNumber(arguments, L"distance_mm", distance_mm) || std::isnan(distance_mm))
    return MakeFailureResult(L"'distance_mm' is required.");
  std::wstring refusal;
  if (!ParseFeatureOperation(arguments, recipe.is_cut, refusal)) return MakeFailureResult(refusal);
  JsonReadNumber(arguments, L"taper_angle_deg", recipe.taper_deg);
  auto depths = form.read_depths(arguments, model, distance_mm, recipe);
  if (!depths.success) return depths;

  FeatureInfo sketch;
  if (auto found = FeatureLookup(model, recipe.sketch_name, sketch, true); !found.success) return found;
  ElementTreeBuilder tree = ExtrudeTree(recipe);
  std::wstring name;
  if (auto made = CreateNamedFeature(model, tree, sketch, L"Extrude", name); !made.success) return made;
  return MakeSuccessResult(form.message(name, recipe.sketch_name), FeatureNameData(name));
}

CreoMcpOperationResult FeatureExtrude(const std::wstring& arguments) {
  return Extrude(arguments, {ReadExtent, [](const std::wstring& feature, const std::wstring& sketch) {
                               return Format(L"Extrusion '%s' created from '%s'.", feature, sketch);
                             }});
}

CreoMcpOperationResult FeatureExtrudeAdvanced(const std::wstring& arguments) {
  return Extrude(arguments, {ReadTwoDistances, [](const std::wstring& feature, const std::wstring& sketch) {
                               return Format(L"Advanced extrusion '%s' created from '%s'.", feature, sketch);
                             }});
}

CreoMcpOperationResult FeatureRevolve(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;

  RevolveRecipe recipe;
  if (auto named = ReadSketchName(arguments, recipe.sketch_name); !named.success) return named;
  JsonReadNumber(arguments, L"angle_deg", recipe.angle_deg);
  if (!(recipe.angle_deg > 0)) return MakeFailureResult(L"'angle_deg' must be greater than 0.");
  std::wstring refusal;
  if (!ParseFeatureOperation(arguments, recipe.is_cut, refusal)) return MakeFailureResult(refusal);
  recipe.negative = ToLower(JsonReadStringArgument(arguments, L"direction")) == L"negative";

  FeatureInfo sketch;
  if (auto found = FeatureLookup(model, recipe.sketch_name, sketch, true); !found.success) return found;
  if (auto axis = PrepareRevolveCenterline(sketch, arguments); !axis.success) return axis;
  ElementTreeBuilder tree = RevolveTree(recipe);
  std::wstring name;
  if (auto made = CreateNamedFeature(model, tree, sketch, L"Revolve", name); !made.success) return made;
  return MakeSuccessResult(
      Format(L"Revolve '%s' created from '%s' (%.3g deg).", name, recipe.sketch_name, recipe.angle_deg),
      FeatureNameData(name));
}

}  // namespace

void RegisterExtrudeRevolveOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_feature_extrude", FeatureExtrude);
  provider.RegisterOperation(L"api_feature_extrude_advanced", FeatureExtrudeAdvanced);
  provider.RegisterOperation(L"api_feature_revolve", FeatureRevolve);
}

}  // namespace vek::feature

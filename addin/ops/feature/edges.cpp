#include "addin/ops/feature/edges.h"

#include <optional>
#include <string>
#include <vector>

#include "addin/host/element_tree_builder.h"
#include "addin/ops/common/history.h"
#include "addin/ops/common/units.h"
#include "addin/ops/feature/creation.h"
#include "addin/ops/feature/edge_selection.h"
#include "addin/ops/feature/frame.h"
#include "addin/platform/log.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::feature {
namespace {

// The forms of a chamfer, as its recipe numbers them.
enum ChamferScheme : int {
  kEqualDistance = 602,
  kTwoDistance = 603,
  kDistanceAngle = 604,
};

struct ChamferRecipe {
  std::wstring type;
  ChamferScheme scheme = kEqualDistance;
  double distance = 0;  // model units
  double second = 0;    // model units, or degrees of a distance with an angle

  bool TakesSides() const { return scheme != kEqualDistance; }
};

// One measure of a round or a chamfer.
void AddLeg(ElementTreeBuilder& tree, ElementTreeBuilder::Row parent, int id, double value) {
  tree.OnFailure(L"Failed to set round/chamfer leg value.");
  const auto leg = tree.Compound(parent, id);
  tree.Integer(leg, 2108, 1);
  tree.Double(leg, 2109, value);
}

ElementTreeBuilder RoundTree(OwnedCollection& edges, double radius) {
  ElementTreeBuilder tree(386, L"Failed to allocate round element tree.");
  const auto root = tree.Root();
  tree.OnFailure(L"Failed to populate round element tree.");
  tree.Integer(root, 387, 913);  // feature type: round
  const auto sets = tree.Compound(root, 2101);
  const auto set = tree.Compound(sets, 2102);
  tree.Integer(set, 2178, 0);
  const auto shape = tree.Compound(set, 2177);
  tree.Integer(shape, 2119, 2);
  const auto references = tree.Compound(set, 2121);
  tree.Integer(references, 2179, 1);
  tree.Collection(references, 2124, edges);
  const auto radii = tree.Compound(set, 2123);
  const auto constant = tree.Compound(radii, 2122);
  AddLeg(tree, constant, 2106, radius);
  tree.OnFailure(L"Failed to set round attach type.");
  tree.Integer(root, 3042, 0);
  return tree;
}

// The surface from which the first leg is measured: the first one beside the edge.
std::optional<ProGeomitem> ReferenceFace(ProMdl model, const EdgeItem& item) {
  const ProEdge edge = EdgeOf(item);
  if (edge == nullptr) return std::nullopt;
  ProEdge edge1 = nullptr, edge2 = nullptr;
  ProSurface face1 = nullptr, face2 = nullptr;
  if (ProEdgeNeighborsGet(edge, &edge1, &edge2, &face1, &face2) != PRO_TK_NO_ERROR || face1 == nullptr)
    return std::nullopt;
  ProGeomitem face{};
  if (ProSurfaceToGeomitem(static_cast<ProSolid>(model), face1, &face) != PRO_TK_NO_ERROR)
    return std::nullopt;
  return face;
}

// Fills the tree behind its root. `first_edge` gives the reference surface, one for all edges.
CreoMcpOperationResult FillChamferTree(ElementTreeBuilder& tree, ProMdl model, const ChamferRecipe& recipe,
                                       const EdgeItem& first_edge, OwnedCollection& edges) {
  const auto root = tree.Root();
  tree.OnFailure(L"Failed to populate chamfer element tree.");
  tree.Integer(root, 387, 914);  // feature type: chamfer
  const auto sets = tree.Compound(root, 2101);
  const auto set = tree.Compound(sets, 2102);
  tree.Integer(set, 2103, recipe.scheme);
  tree.Integer(set, 3184, 1);
  const auto references = tree.Compound(set, 2121);
  tree.Collection(references, 2124, edges);
  if (tree.ok() && recipe.TakesSides()) {
    const auto face = ReferenceFace(model, first_edge);
    if (!face)
      return MakeFailureResult(
          L"Failed to resolve a reference face for two_distance/distance_angle chamfer.");
    tree.OnFailure(L"Failed to set chamfer reference surface.");
    tree.Reference(references, 2104, *face);
  }
  tree.OnFailure(L"Failed to add chamfer radii.");
  const auto radii = tree.Compound(set, 2123);
  const auto legs = tree.Compound(radii, 2122);
  // With an angle the legs change places: the angle comes first.
  const bool angle_first = recipe.scheme == kDistanceAngle;
  AddLeg(tree, legs, 2106, angle_first ? recipe.second : recipe.distance);
  if (recipe.TakesSides()) AddLeg(tree, legs, 2107, angle_first ? recipe.distance : recipe.second);
  tree.OnFailure(L"Failed to finalize chamfer tree.");
  tree.Integer(root, 3042, 0);
  tree.Compound(root, 2113);
  return tree.ok() ? MakeSuccessResult() : MakeFailureResult(tree.message());
}

// Which edges the arguments of either operation mean.
CreoMcpOperationResult ReadEdgeTargets(const std::wstring& arguments, ProMdl model,
                                       std::vector<EdgeItem>& edges) {
  const std::wstring feature_name = JsonReadStringArgument(arguments, L"feature_name");
  std::wstring edge_scope = JsonReadStringArgument(arguments, L"edge_scope");
  if (edge_scope.empty()) edge_scope = L"all";
  std::vector<std::wstring> selectors;
  JsonReadStringArray(arguments, L"edge_selectors", selectors);
  return ResolveEdgeTargets(model, feature_name, edge_scope, selectors, edges);
}

// What both operations do once their feature stands.
CreoMcpOperationResult Answer(const std::wstring& name, std::wstring message) {
  LogOperation(L"CreoMcpEdge: " + message);
  PushCreateFeature(name);
  return MakeSuccessResult(std::move(message), FeatureNameData(name));
}

CreoMcpOperationResult EdgeFillet(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;
  double radius_mm = 0;
  if (!JsonReadNumber(arguments, L"radius_mm", radius_mm) || !(radius_mm > 0))
    return MakeFailureResult(L"'radius_mm' is required and must be greater than 0.");
  std::vector<EdgeItem> edges;
  if (auto targets = ReadEdgeTargets(arguments, model, edges); !targets.success) return targets;
  const double radius = MmToModel(model, radius_mm);

  OwnedReferences references;
  OwnedCollection collection;
  auto collected = EdgesToCollection(edges, collection, references);
  if (!collected.success) return collected;
  ElementTreeBuilder tree = RoundTree(collection, radius);
  if (!tree.ok()) return MakeFailureResult(tree.message());
  ProFeature feature{};
  auto created = CreateFeatureFromTree(model, tree.tree(), 1, L"fillet", feature, true);
  if (!created.success) return created;
  const std::wstring name = AssignFeatureName(model, feature, L"Round");
  return Answer(name,
                Format(L"Fillet '%s' applied: r=%.3g mm on %u edge(s).", name, radius_mm, edges.size()));
}

// The form of the chamfer and its second measure.
CreoMcpOperationResult ReadChamferForm(const std::wstring& arguments, ProMdl model, ChamferRecipe& recipe) {
  recipe.type = ToLower(Trim(JsonReadStringArgument(arguments, L"type")));
  if (recipe.type.empty()) recipe.type = L"equal_distance";
  if (recipe.type == L"equal_distance") {
    recipe.scheme = kEqualDistance;
  } else if (recipe.type == L"two_distance") {
    double distance2_mm = 0;
    if (!JsonReadNumber(arguments, L"distance2_mm", distance2_mm) || !(distance2_mm > 0))
      return MakeFailureResult(L"'distance2_mm' is required for two_distance chamfer.");
    recipe.scheme = kTwoDistance;
    recipe.second = MmToModel(model, distance2_mm);
  } else if (recipe.type == L"distance_angle") {
    if (!JsonReadNumber(arguments, L"angle_deg", recipe.second))
      return MakeFailureResult(L"'angle_deg' is required for distance_angle chamfer.");
    recipe.scheme = kDistanceAngle;
  } else {
    return MakeFailureResult(L"Unknown chamfer type. Use equal_distance, two_distance, or distance_angle.");
  }
  return MakeSuccessResult();
}

CreoMcpOperationResult EdgeChamfer(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;
  double distance_mm = 0;
  if (!JsonReadNumber(arguments, L"distance_mm", distance_mm) || !(distance_mm > 0))
    return MakeFailureResult(L"'distance_mm' is required and must be greater than 0.");
  ChamferRecipe recipe;
  if (auto form = ReadChamferForm(arguments, model, recipe); !form.success) return form;
  std::vector<EdgeItem> edges;
  if (auto targets = ReadEdgeTargets(arguments, model, edges); !targets.success) return targets;
  recipe.distance = MmToModel(model, distance_mm);

  OwnedReferences references;
  OwnedCollection collection;
  auto collected = EdgesToCollection(edges, collection, references);
  if (!collected.success) return collected;
  ElementTreeBuilder tree(386, L"Failed to allocate chamfer element tree.");
  auto filled = FillChamferTree(tree, model, recipe, edges.front(), collection);
  if (!filled.success) return filled;
  ProFeature feature{};
  auto created = CreateFeatureFromTree(model, tree.tree(), 1, L"chamfer", feature, true);
  if (!created.success) return created;
  const std::wstring name = AssignFeatureName(model, feature, L"Chamfer");
  return Answer(name, Format(L"Chamfer '%s' applied: type=%s, d=%.3g mm on %u edge(s).", name, recipe.type,
                             distance_mm, edges.size()));
}

}  // namespace

void RegisterEdgeOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_edge_fillet", EdgeFillet);
  provider.RegisterOperation(L"api_edge_chamfer", EdgeChamfer);
}

}  // namespace vek::feature

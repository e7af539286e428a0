#include "addin/ops/feature/geometry_mirror.h"

#include <algorithm>
#include <string>
#include <vector>

#include "addin/host/element_tree_builder.h"
#include "addin/host/visits.h"
#include "addin/ops/feature/creation.h"
#include "addin/ops/feature/frame.h"
#include "addin/ops/feature/pattern_directions.h"
#include "addin/ops/feature/pattern_words.h"
#include "addin/ops/feature/patterns.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"

namespace vek::feature {
namespace {

constexpr int kQuiltItemType = 57;

// What can be mirrored, in the order in which each feature is asked for it.
constexpr int kMirroredItemTypes[] = {kQuiltItemType, 5, 62, 21, 25, 66};

// The host takes back what fails to regenerate: a solid that can't be made leaves no feature.
constexpr int kMirrorOption = 6;

bool IsInactive(ProGeomitem& item) {
  ProBoolean inactive{};
  return ProGeomitemIsInactive(&item, &inactive) == PRO_TK_NO_ERROR && inactive != 0;
}

bool IsSameItem(const ProModelitem& a, const ProModelitem& b) {
  return a.type == b.type && a.id == b.id && a.owner == b.owner;
}

// The active geometry of the features, each item once.
std::vector<ProModelitem> MirroredItems(const std::vector<ProFeature>& features) {
  std::vector<ProModelitem> items;
  const auto collect = [&items](ProGeomitem* item, ProError) {
    const bool known =
        std::ranges::any_of(items, [item](const ProModelitem& other) { return IsSameItem(*item, other); });
    if (!IsInactive(*item) && !known) items.push_back(*item);
    return PRO_TK_NO_ERROR;
  };
  for (ProFeature feature : features)
    for (const int type : kMirroredItemTypes) VisitGeometry(feature, type, collect);
  return items;
}

ElementTreeBuilder MirrorTree(const std::vector<ProModelitem>& items, const ProModelitem& plane) {
  ElementTreeBuilder tree(386, L"Failed to allocate mirror element tree.");
  tree.OnFailure(L"Failed to populate geometry mirror element tree.");
  tree.Integer(tree.Root(), 387, 950);  // feature type: mirror
  tree.Integer(tree.Root(), 3182, 1);
  tree.References(tree.Root(), 3161, items);
  tree.Reference(tree.Root(), 3162, plane);
  tree.Integer(tree.Root(), 3163, 0);
  return tree;
}

ElementTreeBuilder SolidifyTree(const ProModelitem& quilt) {
  ElementTreeBuilder tree(386, L"Failed to allocate solidify tree.");
  tree.OnFailure(L"Failed to populate solidify tree.");
  tree.Integer(tree.Root(), 387, 917);  // feature type: protrusion
  tree.Integer(tree.Root(), 388, 512);  // feature form: from a quilt
  tree.Reference(tree.Root(), 3023, quilt);
  return tree;
}

CreoMcpOperationResult CreateFromTree(ProMdl model, ElementTreeBuilder tree, const std::wstring& name,
                                      ProFeature& feature) {
  if (!tree.ok()) return MakeFailureResult(tree.message());
  return CreateFeatureFromTree(model, tree.tree(), kMirrorOption, name, feature, true);
}

CreoMcpOperationResult CreateMirror(ProMdl model, const std::vector<ProFeature>& features,
                                    const ProModelitem& plane, ProFeature& mirror) {
  const std::vector<ProModelitem> items = MirroredItems(features);
  if (items.empty())
    return MakeFailureResult(
        L"No mirrorable geometry found on the named feature(s). Creo Toolkit cannot mirror features the way "
        L"the UI does; it mirrors surfaces/quilts/curves/axes owned by those features.");
  return CreateFromTree(model, MirrorTree(items, plane), L"mirror", mirror);
}

// A solid of the mirror's quilt, if it has one: the mirror of a solid is a quilt only. False where none can
// be made, and then the mirror stands as it is.
bool SolidifyMirror(ProMdl model, ProFeature mirror, ProFeature& solid) {
  ProModelitem quilt{};
  const ProError visited = VisitGeometry(mirror, kQuiltItemType, [&quilt](ProGeomitem* item, ProError) {
    if (IsInactive(*item)) return PRO_TK_NO_ERROR;
    quilt = *item;
    return PRO_TK_E_FOUND;
  });
  if (visited != PRO_TK_E_FOUND || static_cast<int>(quilt.type) != kQuiltItemType) return false;
  return CreateFromTree(model, SolidifyTree(quilt), L"solidify", solid).success;
}

CreoMcpOperationResult PatternMirror(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;

  std::vector<std::wstring> feature_names;
  JsonReadStringArray(arguments, L"feature_names", feature_names);
  std::wstring word = JsonReadStringArgument(arguments, L"mirror_plane");
  if (word.empty()) word = L"XY";

  std::vector<ProFeature> features;
  if (auto found = ResolvePatternFeatures(model, feature_names, features); !found.success) return found;
  const std::wstring plane_name = MirrorPlaneName(word);
  ProModelitem plane{};
  if (!FindDatumPlane(model, plane_name, plane))
    return MakeFailureResult(
        Format(L"Could not resolve mirror_plane '%s' to datum plane '%s'.", word, plane_name));

  ProFeature mirror{};
  if (auto created = CreateMirror(model, features, plane, mirror); !created.success) return created;
  std::wstring name = AssignFeatureName(model, mirror, L"Mirror");
  // The attempt may fail without a word: the client has its mirror all the same.
  ProFeature solid{};
  if (SolidifyMirror(model, mirror, solid)) name = AssignFeatureName(model, solid, L"Mirror");
  return PatternSucceeded(
      name, Format(L"Geometry mirror '%s' created from %u feature(s) across %s (Toolkit mirrors feature "
                   L"surfaces/geometry, not UI feature-mirror).",
                   name, static_cast<unsigned>(features.size()), plane_name));
}

}  // namespace

void RegisterGeometryMirrorOperation(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_pattern_mirror", PatternMirror);
}

}  // namespace vek::feature

#include "addin/ops/feature/draft.h"

#include <cmath>
#include <string>
#include <vector>

#include "addin/host/element_tree_builder.h"
#include "addin/host/references.h"
#include "addin/ops/common/history.h"
#include "addin/ops/feature/creation.h"
#include "addin/ops/feature/draft_geometry.h"
#include "addin/ops/feature/frame.h"
#include "addin/platform/log.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"

namespace vek::feature {
namespace {

constexpr double kSteepestDraftDeg = 30;

// Bits of a feature's state that tell that it stands but couldn't be regenerated.
constexpr int kFailedRegeneration = 64 | 128;

constexpr ProSrfcollinstrType kSingleSurfaces = static_cast<ProSrfcollinstrType>(1);
constexpr ProSrfcollrefType kOneSurface = static_cast<ProSrfcollrefType>(1);

ElementTreeBuilder DraftTree(OwnedCollection& surfaces, OwnedCollection& hinge, const ProGeomitem& direction,
                             double angle_deg) {
  ElementTreeBuilder tree(386, L"Failed to allocate draft element tree.");
  const auto root = tree.Root();
  tree.OnFailure(L"Failed to populate draft element tree.");
  tree.Integer(root, 387, 927);  // feature type: draft
  tree.Integer(root, 3305, 0);
  tree.Integer(root, 2154, 0);
  tree.Collection(root, 2213, surfaces);
  const auto pull = tree.Compound(root, 3252);
  tree.Reference(pull, 3253, direction);
  tree.Integer(pull, 3254, 1);
  tree.Integer(root, 2150, 1);
  tree.Integer(root, 3177, 1);
  const auto sides = tree.Compound(root, 2164);
  tree.Integer(sides, 2167, 2);
  tree.Collection(sides, 2124, hinge);
  tree.Integer(sides, 2171, 0);
  tree.Double(sides, 2168, angle_deg);
  return tree;
}

// One instruction for one surface; false as soon as a call fails.
bool AddSurface(ProMdl model, ProSurface surface, const OwnedCollection& collection,
                OwnedReferences& references) {
  OwnedSurfaceInstruction instruction;
  if (ProSrfcollinstrAlloc(kSingleSurfaces, PRO_B_FALSE, instruction.out()) != PRO_TK_NO_ERROR) return false;
  if (ProSrfcollinstrIncludeSet(instruction.get(), PRO_B_TRUE) != PRO_TK_NO_ERROR) return false;
  ProGeomitem item{};
  if (ProSurfaceToGeomitem(static_cast<ProSolid>(model), surface, &item) != PRO_TK_NO_ERROR) return false;
  OwnedReference made;
  if (MakeReference(item, made) != PRO_TK_NO_ERROR) return false;
  const ProReference reference = made.get();
  references.push_back(std::move(made));
  OwnedSurfaceReference surface_reference;
  if (ProSrfcollrefAlloc(kOneSurface, reference, surface_reference.out()) != PRO_TK_NO_ERROR) return false;
  if (ProSrfcollinstrReferenceAdd(instruction.get(), surface_reference.get()) != PRO_TK_NO_ERROR)
    return false;
  surface_reference.release();
  if (ProSrfcollectionInstructionAdd(collection.get(), instruction.get()) != PRO_TK_NO_ERROR) return false;
  instruction.release();
  return true;
}

CreoMcpOperationResult CollectSurfaces(ProMdl model, const std::vector<ProSurface>& surfaces,
                                       OwnedCollection& collection, OwnedReferences& references) {
  if (ProSrfcollectionAlloc(collection.out()) != PRO_TK_NO_ERROR || !collection)
    return MakeFailureResult(L"Failed to allocate draft surface collection.");
  for (const ProSurface surface : surfaces)
    if (!AddSurface(model, surface, collection, references))
      return MakeFailureResult(L"Failed to populate draft surface collection.");
  return MakeSuccessResult();
}

// Makes one draft feature over `sides`. `name` receives its name. On failure the part has no new feature.
CreoMcpOperationResult CreateDraft(ProMdl model, const std::vector<ProSurface>& sides,
                                   const std::vector<ProSurface>& ends, const PullVector& pull,
                                   double angle_deg, std::wstring& name) {
  constexpr EdgeCollectionWords kHingeFailures = {L"Failed to allocate draft hinge collection.",
                                                  L"Failed to allocate hinge instruction.",
                                                  L"Failed to add hinge edge."};
  DraftEdges edges;
  if (auto found = FindDraftEdges(model, sides, ends, pull, edges); !found.success) return found;
  LogOperation(Format(L"Draft refs: surfaces=%u hingeEdges=%u dirEdge=%d endFaces=%u angle=%.3g",
                      sides.size(), edges.hinge.size(), edges.direction->id, ends.size(), angle_deg));

  OwnedReferences references;
  OwnedCollection surfaces, hinge;
  auto collected = CollectSurfaces(model, sides, surfaces, references);
  if (collected.success) collected = CollectEdges(edges.hinge, kHingeFailures, hinge, references);
  if (!collected.success) return collected;
  ElementTreeBuilder tree = DraftTree(surfaces, hinge, edges.direction->item, angle_deg);
  if (!tree.ok()) return MakeFailureResult(tree.message());

  ProFeature feature{};
  auto created = CreateFeatureFromTree(model, tree.tree(), 0, L"draft", feature, true);
  if (!created.success) return created;
  int flags = 0;
  if (ProFeatureStatusflagsGet(&feature, &flags) == PRO_TK_NO_ERROR && (flags & kFailedRegeneration) != 0) {
    int id = feature.id;
    ProFeatureDelete(static_cast<ProSolid>(model), &id, 1, nullptr, 0);
    return MakeFailureResult(L"Draft feature failed to regenerate for one of the side faces.");
  }
  name = AssignFeatureName(model, feature, L"Draft");
  return MakeSuccessResult();
}

CreoMcpOperationResult EdgeDraft(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;
  std::wstring feature_name;
  if (auto named = ReadFeatureName(arguments, feature_name); !named.success) return named;
  double angle_deg = 0;
  if (!JsonReadNumber(arguments, L"angle_deg", angle_deg))
    return MakeFailureResult(L"'angle_deg' is required.");
  if (!(std::fabs(angle_deg) <= kSteepestDraftDeg))
    return MakeFailureResult(L"'angle_deg' must be between -30 and +30 (Creo draft limit).");
  std::wstring pull_direction = JsonReadStringArgument(arguments, L"pull_direction");
  if (pull_direction.empty()) pull_direction = L"Z";
  DraftFaces faces;
  auto classified = ClassifyDraftFaces(model, feature_name, pull_direction, faces);
  if (!classified.success) return classified;
  const PullVector pull = ReadPullDirection(pull_direction).value();

  // One feature a face: a face that the host won't draft then keeps no other from its draft.
  int created = 0, skipped = 0;
  std::wstring last_name, last_message;
  for (const ProSurface side : faces.sides) {
    auto draft = CreateDraft(model, {side}, faces.ends, pull, angle_deg, last_name);
    if (draft.success) {
      ++created;
    } else {
      ++skipped;
      last_message = std::move(draft.message);
    }
  }
  if (created == 0)
    return MakeFailureResult(
        Format(L"No draft created on '%s' for pull_direction '%s' (checked %u side face(s), skipped %d). Use "
               L"the feature extrude axis as pull_direction. Last: %s",
               feature_name, pull_direction, faces.sides.size(), skipped,
               last_message.empty() ? L"null" : last_message));

  std::wstring message = Format(L"Draft applied: %d feature(s), last='%s', %.3g deg pull=%s on '%s'.",
                                created, last_name, angle_deg, pull_direction, feature_name);
  LogOperation(L"CreoMcpEdge: " + message);
  PushCreateFeature(last_name);
  return MakeSuccessResult(std::move(message), FeatureNameData(last_name));
}

}  // namespace

void RegisterDraftOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_edge_draft", EdgeDraft);
}

}  // namespace vek::feature

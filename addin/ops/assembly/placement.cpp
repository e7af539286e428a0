#include "addin/ops/assembly/placement.h"

#include <ProFeature.h>

#include <cmath>

#include "addin/host/extracted_tree.h"
#include "addin/host/owned.h"
#include "addin/ops/common/model_access.h"
#include "addin/text/format.h"

namespace vek::assembly {
namespace {

constexpr int kInitialPositionElement = 611;
constexpr int kConstraintsElement = 605;

ProError SetPosition(ProAsmcomppath* path, ProAsmcomp& comp, const Pose& pose) {
  Pose given = pose;
  return ProAsmcompPositionSet(path, &comp, given.matrix);
}

void Regenerate(ProAsmcomp& comp) {
  ProAsmcompRegenerate(&comp, PRO_B_FALSE);
}

bool Stands(const ProAsmcomp& comp, const Translation& target, Pose& pose) {
  ReadComponentPosition(comp, pose);
  return PoseMatches(pose, target);
}

bool Stands(const ProAsmcomp& comp, const Translation& target) {
  Pose pose;
  return Stands(comp, target, pose);
}

CreoMcpOperationResult DeleteOccurrence(ProMdl assembly, const OccurrenceInfo& info) {
  OwnedArray<int> ids;
  if (!ids.HoldOne(info.id)) return MakeFailureResult(L"Failed to allocate feature-id array for delete.");
  OwnedArray<int> options;
  if (!options.HoldOne(0)) return MakeFailureResult(L"Failed to allocate delete options.");
  const ProError status = ProFeatureWithoptionsDelete(static_cast<ProSolid>(assembly), ids.get(),
                                                      options.As<ProFeatureDeleteOptions>(), 0);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(
        Format(L"Failed to delete occurrence '%s' for reassemble move (status=%d).", info.name, status));
  return MakeSuccessResult();
}

// A model that is placed nowhere may be gone from the session, so it is asked for anew.
ProMdl RetrieveAgain(const std::wstring& name, int type, ProMdl model) {
  ProMdl again = nullptr;
  RetrieveModel(name, type == kAssemblyType ? kAssemblyType : kPartType, again);
  return again != nullptr ? again : model;
}

// Whether the new component ends up on target; `pose` is where it stands. A host that takes the translation
// from the last row puts it elsewhere at first.
bool Seat(ProAsmcomp& comp, const Pose& seed, const Translation& target, Pose& pose) {
  ProAsmcompAllConstrRemove(&comp);
  SetPosition(nullptr, comp, seed);
  Regenerate(comp);
  if (Stands(comp, target, pose)) return true;
  SetPosition(nullptr, comp, TranslationInRow(target));
  Regenerate(comp);
  return Stands(comp, target, pose);
}

// The last resort: deletes the occurrence and places its model anew, under the name of the old one.
CreoMcpOperationResult ReplaceOccurrence(ProMdl assembly, OccurrenceInfo& info, const Translation& target) {
  // A request can ask for no number at all; the occurrence would be gone and nowhere to be put.
  if (!std::isfinite(target.x) || !std::isfinite(target.y) || !std::isfinite(target.z))
    return MakeFailureResult(L"The target position is not finite.");
  ProMdl model = nullptr;
  if (ProAsmcompMdlGet(&info.comp, &model) != PRO_TK_NO_ERROR || model == nullptr)
    return MakeFailureResult(
        Format(L"Failed to resolve model for occurrence '%s' during reassemble move.", info.name));
  const std::wstring kept_name = info.name;
  const std::wstring model_name = ModelName(model);
  ProMdlType type = PRO_MDL_PART;
  ProMdlTypeGet(model, &type);

  if (auto deleted = DeleteOccurrence(assembly, info); !deleted.success) return deleted;
  model = RetrieveAgain(model_name, type, model);
  ActivateModel(assembly);

  Pose seed = TranslationMatrix(target);
  ProAsmcomp placed{};
  const ProError status =
      ProAsmcompAssemble(static_cast<ProSolid>(assembly), static_cast<ProSolid>(model), seed.matrix, &placed);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(
        Format(L"Failed to reassemble occurrence '%s' at new pose (status=%d).", kept_name, status));
  Pose pose;
  const bool seated = Seat(placed, seed, target, pose);
  AssignOccurrenceName(assembly, placed, kept_name);
  info.id = placed.id;
  info.comp = placed;
  info.name = OccurrenceDisplayName(placed);
  info.model = model;
  if (seated) return MakeSuccessResult();
  const Translation at = PoseTranslation(pose);
  return MakeFailureResult(
      Format(L"Reassemble placed '%s' but seed pose stayed at (%g,%g,%g); requested (%g,%g,%g).", kept_name,
             at.x, at.y, at.z, target.x, target.y, target.z));
}

}  // namespace

CreoMcpOperationResult ReleaseOccurrence(ProMdl assembly, OccurrenceInfo& info) {
  if (auto refreshed = RefreshOccurrence(assembly, info); !refreshed.success) return refreshed;
  ProAsmcompAllConstrRemove(&info.comp);
  ProAsmcompSetPlaced(&info.comp, PRO_B_FALSE);
  return RefreshOccurrence(assembly, info);
}

CreoMcpOperationResult RedefineInitPos(const ProAsmcomp& comp, const Pose& pose) {
  ExtractedTree tree;
  const ProError extracted = tree.Extract(comp);
  if (extracted != PRO_TK_NO_ERROR || tree.tree() == nullptr)
    return MakeFailureResult(Format(L"Failed to extract component element tree (status=%d).", extracted));

  OwnedElementPath path;
  if (ProElempathAlloc(path.out()) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to allocate element path.");
  ProElempathItem step{};
  step.type = PRO_ELEM_PATH_ITEM_ID;
  step.path_item.elem_id = kInitialPositionElement;
  ProElempathDataSet(path.get(), &step, 1);
  ProElement element = nullptr;
  if (ProElemtreeElementGet(tree.tree(), path.get(), &element) != PRO_TK_NO_ERROR || element == nullptr)
    return MakeFailureResult(L"Component element tree has no PRO_E_COMPONENT_INIT_POS.");
  Pose given = pose;
  if (ProElementTransformSet(element, given.matrix) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to set INIT_POS transform.");

  // Constraints would hold the component where it is; a tree without them is as good.
  const int constraints[] = {kConstraintsElement};
  tree.Remove(constraints);

  OwnedArray<int> options;
  options.Allocate(0);
  ProErrorlist errors{};
  ProFeature feature = comp;
  const ProError status = ProFeatureWithoptionsRedefine(nullptr, &feature, tree.tree(),
                                                        options.As<ProFeatureCreateOptions>(), 0, &errors);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to redefine component INIT_POS (status=%d, errors=%d).", status,
                                    errors.error_number));
  return MakeSuccessResult();
}

CreoMcpOperationResult PersistTranslation(ProMdl assembly, OccurrenceInfo& info, const Translation& target) {
  if (auto refreshed = RefreshOccurrence(assembly, info); !refreshed.success) return refreshed;
  ProAsmcomppath path{};
  if (auto built = ComponentPathFor(assembly, info, path); !built.success) return built;
  const Pose pose = TranslationMatrix(target);

  ProError status = SetPosition(nullptr, info.comp, pose);
  if (status != PRO_TK_NO_ERROR) status = SetPosition(&path, info.comp, pose);
  Regenerate(info.comp);
  RefreshOccurrence(assembly, info);
  if (const bool stands = Stands(info.comp, target); stands && status == PRO_TK_NO_ERROR)
    return MakeSuccessResult();

  RedefineInitPos(info.comp, pose);
  RefreshOccurrence(assembly, info);
  Regenerate(info.comp);
  RefreshOccurrence(assembly, info);
  if (Stands(info.comp, target)) return MakeSuccessResult();

  const std::wstring name = info.name;
  if (auto replaced = ReplaceOccurrence(assembly, info, target); !replaced.success)
    return MakeFailureResult(Format(L"Failed to persist placement for '%s' (PositionSet status=%d; %s).",
                                    name, status, replaced.message));
  return MakeSuccessResult();
}

CreoMcpOperationResult PersistPose(ProMdl assembly, OccurrenceInfo& info, const Pose& pose) {
  const Translation target = PoseTranslation(pose);
  if (auto released = ReleaseOccurrence(assembly, info); !released.success) return released;
  if (auto refreshed = RefreshOccurrence(assembly, info); !refreshed.success) return refreshed;
  const Pose wanted = ColumnForm(pose);

  const ProError status = SetPosition(nullptr, info.comp, wanted);
  Regenerate(info.comp);
  RefreshOccurrence(assembly, info);
  if (const bool stands = Stands(info.comp, target); stands && status == PRO_TK_NO_ERROR)
    return MakeSuccessResult();

  RedefineInitPos(info.comp, wanted);
  RefreshOccurrence(assembly, info);
  Regenerate(info.comp);
  if (Stands(info.comp, target)) return MakeSuccessResult();
  return ReplaceOccurrence(assembly, info, target);
}

}  // namespace vek::assembly

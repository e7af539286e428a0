#include "addin/ops/feature/creation.h"

#include <ProMdl.h>
#include <ProSolid.h>
#include <ProWindows.h>

#include "addin/host/owned.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek::feature {
namespace {

constexpr int kSketchedOption = 1;

bool SelectModel(ProMdl model, OwnedSelection& selection) {
  ProModelitem item{};
  return ProMdlToModelitem(model, &item) == PRO_TK_NO_ERROR &&
         ProSelectionAlloc(nullptr, &item, selection.out()) == PRO_TK_NO_ERROR && selection;
}

bool AllocateOption(int option, OwnedArray<int>& options) {
  if (options.Allocate(1) != PRO_TK_NO_ERROR || !options) return false;
  options[0] = option;
  return true;
}

// What the failed steps of both ways have in common.
CreoMcpOperationResult ModelNotSelected() {
  return MakeFailureResult(L"Failed to select the active part for feature creation.");
}

CreoMcpOperationResult OptionsNotAllocated() {
  return MakeFailureResult(L"Failed to allocate feature create options.");
}

void RegenerateAndShow(ProMdl model) {
  ProSolidRegenerate(static_cast<ProSolid>(model), 0);
  ProWindowRepaint(kCurrentWindow);
}

}  // namespace

CreoMcpOperationResult CreateFeatureFromTree(ProMdl model, ProElement tree, int option,
                                             const std::wstring& name, ProFeature& feature, bool regenerate) {
  OwnedSelection selection;
  if (!SelectModel(model, selection)) return ModelNotSelected();
  OwnedArray<int> options;
  if (!AllocateOption(option, options)) return OptionsNotAllocated();

  ProErrorlist errors{};
  const ProError status = ProFeatureWithoptionsCreate(
      selection.get(), tree, options.As<ProFeatureCreateOptions>(), 0, &feature, &errors);
  LogOperation(Format(L"Feature Create [%s]: status=%d errCount=%d featId=%d", name, status,
                      errors.error_number, feature.id));
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Creo could not create the %s feature (status=%d, errors=%d).", name,
                                    status, errors.error_number));
  if (regenerate) RegenerateAndShow(model);
  return MakeSuccessResult();
}

CreoMcpOperationResult CreateSketchedFeature(ProMdl model, ProElement tree, const FeatureInfo& sketch,
                                             ProFeature& feature) {
  OwnedSelection model_selection;
  if (!SelectModel(model, model_selection)) return ModelNotSelected();
  ProFeature curve = sketch.feature;
  OwnedSelection sketch_selection;
  if (ProSelectionAlloc(nullptr, &curve, sketch_selection.out()) != PRO_TK_NO_ERROR || !sketch_selection)
    return MakeFailureResult(L"Failed to select the sketched curve feature.");

  // The array holds a copy of the selection but doesn't own it.
  OwnedArray<ProSelection> selections;
  OwnedSelection copy;
  if (selections.Allocate(1) != PRO_TK_NO_ERROR || !selections ||
      ProSelectionCopy(sketch_selection.get(), copy.out()) != PRO_TK_NO_ERROR || !copy)
    return MakeFailureResult(L"Failed to build sketch selection array.");
  selections[0] = copy.get();

  OwnedArray<int> options;
  if (!AllocateOption(kSketchedOption, options)) return OptionsNotAllocated();

  ProErrorlist errors{};
  const ProError status =
      ProFeatureSketchedWithOptionsCreate(model_selection.get(), tree, options.As<ProFeatureCreateOptions>(),
                                          selections.get(), 0, &feature, &errors);
  LogOperation(Format(L"Feature Create (sketched): status=%d errCount=%d featId=%d sketch='%s'", status,
                      errors.error_number, feature.id, sketch.name));
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(
        Format(L"Creo could not create the feature from sketch '%s' (status=%d, errors=%d).", sketch.name,
               status, errors.error_number));
  RegenerateAndShow(model);
  return MakeSuccessResult();
}

}  // namespace vek::feature

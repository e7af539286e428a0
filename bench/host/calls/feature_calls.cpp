// Creating and redefining features, and their element trees.
#include <ProFeature.h>

#include <optional>
#include <set>
#include <vector>

#include "bench/host/calls/array.h"
#include "bench/host/calls/element_handles.h"
#include "bench/host/calls/selection.h"
#include "bench/host/features/features.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/item_lookup.h"

namespace bench {
namespace {

constexpr ProFeattype kSketchedCurve = 949;

// The options in a caller's array; nothing when it is no array or holds an unknown one.
std::optional<std::set<int>> ReadOptions(const ProFeatureCreateOptions* array) {
  const auto options = ArrayObjects(array);
  if (!options) return std::nullopt;
  std::set<int> read;
  for (const int option : *options) {
    if (option != kStaysThoughItFailed && option != 1 && option != kIncompleteFeature &&
        option != kUndoneWhenItFails)
      return std::nullopt;
    read.insert(option);
  }
  return read;
}

// The part or assembly that a caller selected, or null.
Model* SelectedSolid(ProSelection selection) {
  const ProModelitem* item = SelectedItem(selection);
  if (!item || (item->type != PRO_PART && item->type != PRO_ASSEMBLY)) return nullptr;
  return LiveSolid(item->owner);
}

// The complete, active sketched curve of the model in an array of one selection, or null.
const Feature* SelectedSketch(const Model& model, const ProSelection* array) {
  const auto sketches = ArrayObjects(array);
  if (!sketches || sketches->size() != 1) return nullptr;
  const ProModelitem* item = SelectedItem(sketches->front());
  if (!item || item->owner != &model) return nullptr;
  const Feature* sketch = FindFeature(item);
  const bool usable =
      sketch && sketch->type == kSketchedCurve && !sketch->incomplete && sketch->status == PRO_FEAT_ACTIVE;
  return usable ? sketch : nullptr;
}

// The errors go out in memory of the host, which lasts until the next call that tells errors.
ProError Finish(FeatureOutcome outcome, ProErrorlist* errors) {
  static std::vector<ProErrorStruct> told;
  told = std::move(outcome.errors);
  if (errors) *errors = {told.data(), static_cast<int>(told.size())};
  return outcome.status;
}

ProError FinishCreation(Model& model, FeatureOutcome outcome, ProFeature* feature, ProErrorlist* errors) {
  if (outcome.status == PRO_TK_NO_ERROR) *feature = {PRO_FEATURE, outcome.feature, Handle(model)};
  return Finish(std::move(outcome), errors);
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProFeatureWithoptionsCreate(ProSelection model, ProElement tree, ProFeatureCreateOptions* options,
                                     int flags, ProFeature* feature, ProErrorlist* errors) {
  HOST_CALL(model, tree, options, flags) {
    if (!model || !tree || !feature) return PRO_TK_BAD_INPUTS;
    Model* solid = SelectedSolid(model);
    const OpenElement* root = UseElement(tree);
    const auto asked = ReadOptions(options);
    if (!solid || !root || !asked) return PRO_TK_BAD_INPUTS;
    return FinishCreation(*solid, CreateFeature(*solid, *root->node, *asked, nullptr), feature, errors);
  };
}

ProError ProFeatureSketchedWithOptionsCreate(ProSelection model, ProElement tree,
                                             ProFeatureCreateOptions* options, ProSelection* sketches,
                                             int flags, ProFeature* feature, ProErrorlist* errors) {
  HOST_CALL(model, tree, options, sketches, flags) {
    if (!model || !tree || !feature) return PRO_TK_BAD_INPUTS;
    Model* solid = SelectedSolid(model);
    const OpenElement* root = UseElement(tree);
    const auto asked = ReadOptions(options);
    if (!solid || !root || !asked) return PRO_TK_BAD_INPUTS;
    const Feature* sketch = SelectedSketch(*solid, sketches);
    if (!sketch) return PRO_TK_BAD_INPUTS;
    return FinishCreation(*solid, CreateFeature(*solid, *root->node, *asked, sketch), feature, errors);
  };
}

ProError ProFeatureWithoptionsRedefine(ProAsmcomppath* path, ProFeature* feature, ProElement tree,
                                       ProFeatureCreateOptions* options, int flags, ProErrorlist* errors) {
  HOST_CALL(path, feature, tree, options, flags) {
    if (!feature || !tree) return PRO_TK_BAD_INPUTS;
    const OpenElement* root = UseElement(tree);
    const auto asked = ReadOptions(options);
    if (!root || !asked) return PRO_TK_BAD_INPUTS;
    Feature* found = FindFeature(feature);
    if (!found) return PRO_TK_E_NOT_FOUND;
    return Finish(RedefineFeature(*LiveSolid(feature->owner), *found, *root->node, *asked), errors);
  };
}

ProError ProFeatureElemtreeExtract(ProFeature* feature, ProAsmcomppath* path,
                                   ProFeatureElemtreeExtractOptions options, ProElement* tree) {
  HOST_CALL(feature, path, options) {
    if (!feature || !tree) return PRO_TK_BAD_INPUTS;
    const Feature* found = FindFeature(feature);
    if (!found) return PRO_TK_E_NOT_FOUND;
    auto extracted = ExtractTree(*found);
    if (!extracted) return PRO_TK_BAD_CONTEXT;
    *tree = EnterExtractedTree(std::move(extracted), *feature);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProFeatureElemtreeFree(ProFeature* feature, ProElement tree) {
  HOST_CALL_THAT_NEVER_FAILS(feature, tree) {
    if (!feature || !tree) return PRO_TK_BAD_INPUTS;
    Ledger& ledger = TheHost().ledger;
    const OpenElement* root = UseElement(tree);
    if (!root) return PRO_TK_INVALID_PTR;
    if (!root->owned || root->kind != HandleKind::kExtractedTree) {
      ledger.Violation(CurrentCall(), "frees an element that is no extracted tree");
      return PRO_TK_BAD_CONTEXT;
    }
    // A wrong feature is a mistake, but not a reason to keep the tree as well.
    const bool wrong = root->feature.id != feature->id || root->feature.owner != feature->owner;
    if (wrong)
      ledger.Violation(CurrentCall(), "frees the extracted tree of another feature");
    else if (!FindFeature(feature))
      ledger.Violation(CurrentCall(), "frees the tree of a feature that is gone");
    ledger.TakeBack(tree, HandleKind::kExtractedTree, CurrentCall());
    EndTree(tree);
    return wrong ? PRO_TK_BAD_INPUTS : PRO_TK_NO_ERROR;
  };
}

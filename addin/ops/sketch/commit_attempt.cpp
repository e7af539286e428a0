#include "addin/ops/sketch/commit_attempt.h"

#include <ProWindows.h>

#include "addin/host/element_tree_builder.h"
#include "addin/host/extracted_tree.h"
#include "addin/host/owned.h"
#include "addin/ops/sketch/feature_name.h"
#include "addin/ops/sketch/section_transfer.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek::sketch {
namespace {

constexpr int kIncompleteFeature = 2;
constexpr int kNoOptions = 0;

void LogConverted(int id, ProError status, ProReference reference) {
  LogOperation(Format(L"Sketch AddRefToParent: id=%d ToReference status=%d ref=%p", id, status, reference));
}

void LogAdded(int id, ProError status) {
  LogOperation(Format(L"Sketch AddRefToParent: id=%d ElementAdd status=%d", id, status));
}

// The feature's tree without a sketcher, which the host adds to an incomplete feature by itself.
ElementTreeBuilder SketchElementTree(const SketchSession& session, ProSelection plane,
                                     ProSelection orientation) {
  const ElementTreeBuilder::ReferenceObserver logged{LogConverted, LogAdded};
  ElementTreeBuilder tree(386, L"Failed to set sketch plane references.");
  tree.Integer(tree.Root(), 387, 949);  // feature type: curve
  tree.Integer(tree.Root(), 511, 0);    // curve type: sketched
  tree.UncheckedText(tree.Root(), 1964, session.name);
  const auto section = tree.Compound(tree.Root(), 447);
  const auto setup = tree.Compound(section, 450);
  tree.ReferenceFromSelection(setup, 451, plane, logged);  // sketch plane
  tree.Integer(setup, 452, session.plane_side);            // view direction
  tree.Integer(setup, 454, session.orient_dir);            // orientation direction
  tree.ReferenceFromSelection(setup, 455, orientation, logged);
  return tree;
}

class Attempt {
 public:
  explicit Attempt(SketchSession& session) : session_(session) {}

  using Outcome = std::optional<CreoMcpOperationResult>;

  Outcome Run();
  // Frees everything in the order that the host expects, and takes an incomplete feature away after a
  // failure.
  void CleanUp(bool failed);

 private:
  bool SelectReferences();
  bool BuildTree();
  bool CreateIncomplete();
  bool ExtractTree();
  bool Redefine();
  CreoMcpOperationResult FinishFeature();
  ProError DeleteFeature(int id);

  SketchSession& session_;
  OwnedSelection plane_;
  OwnedSelection orientation_;
  OwnedSelection model_;
  std::optional<ElementTreeBuilder> tree_;
  OwnedArray<int> options_;
  ProErrorlist errors_{};
  ProFeature feature_{};
  bool incomplete_exists_ = false;
  ExtractedTree extracted_;
};

Attempt::Outcome Attempt::Run() {
  if (!SelectReferences()) return std::nullopt;
  if (!BuildTree()) return MakeFailureResult(L"Failed to set sketch plane references.");
  if (!CreateIncomplete()) return MakeFailureResult(L"Creo could not create the sketch feature.");
  if (!ExtractTree())
    return MakeFailureResult(L"Sketch feature created but could not extract its element tree.");
  const ProSection target = FindSketcherSection(extracted_);
  if (target == nullptr) return std::nullopt;

  LogOperation(L"Sketch Commit: got Creo-provided PRO_E_SKETCHER section");
  ProSectionIntentManagerModeSet(target, PRO_B_FALSE);
  LogOperation(L"Sketch Commit: copying session entities into Creo section");
  if (!CopyEntities(session_, target))
    return MakeFailureResult(L"Failed to copy sketch entities into Creo's section.");
  std::wstring refusal;
  if (!ReplayRecords(session_, target, refusal)) return MakeFailureResult(refusal);

  // On and off again: the host takes up what was added while the mode was off.
  ProSectionIntentManagerModeSet(target, PRO_B_TRUE);
  ProSectionIntentManagerModeSet(target, PRO_B_FALSE);
  RegenerateSection(target);
  if (!Redefine())
    return MakeFailureResult(L"Sketch feature created but Creo could not complete it (redefine failed).");
  return FinishFeature();
}

bool Attempt::SelectReferences() {
  if (ProSelectionAlloc(nullptr, &session_.plane_item, plane_.out()) != PRO_TK_NO_ERROR) {
    LogOperation(L"Sketch Commit: plane ProSelectionAlloc FAILED");
    return false;
  }
  if (ProSelectionAlloc(nullptr, &session_.orient_item, orientation_.out()) != PRO_TK_NO_ERROR) {
    LogOperation(L"Sketch Commit: orient ProSelectionAlloc FAILED");
    return false;
  }
  ProModelitem item{};
  if (ProMdlToModelitem(session_.model, &item) != PRO_TK_NO_ERROR ||
      ProSelectionAlloc(nullptr, &item, model_.out()) != PRO_TK_NO_ERROR) {
    LogOperation(L"Sketch Commit: model selection FAILED");
    return false;
  }
  return true;
}

bool Attempt::BuildTree() {
  LogOperation(L"Sketch Commit: building incomplete tree (plane only, no sketcher)");
  if (!orientation_)
    LogOperation(L"Sketch Commit: orient selection is required");
  else
    tree_.emplace(SketchElementTree(session_, plane_.get(), orientation_.get()));
  if (tree_ && tree_->ok()) return true;
  LogOperation(L"Sketch Commit: BuildSketchElementTree FAILED");
  return false;
}

bool Attempt::CreateIncomplete() {
  if (options_.Allocate(1) != PRO_TK_NO_ERROR || !options_) return false;
  options_[0] = kIncompleteFeature;
  LogOperation(L"Sketch Commit: ProFeatureWithoptionsCreate INCOMPLETE_FEAT");
  const ProError status = ProFeatureWithoptionsCreate(
      model_.get(), tree_->tree(), options_.As<ProFeatureCreateOptions>(), 0, &feature_, &errors_);
  LogOperation(Format(L"Sketch Commit: create status=%d errCount=%d featId=%d", status, errors_.error_number,
                      feature_.id));
  incomplete_exists_ = status == PRO_TK_NO_ERROR;
  return incomplete_exists_;
}

bool Attempt::ExtractTree() {
  LogOperation(L"Sketch Commit: ProFeatureElemtreeExtract");
  const ProError status = extracted_.Extract(feature_);
  if (status == PRO_TK_NO_ERROR && extracted_.tree() != nullptr) return true;
  LogOperation(Format(L"Sketch Commit: extract status=%d", status));
  return false;
}

bool Attempt::Redefine() {
  options_[0] = kNoOptions;
  LogOperation(L"Sketch Commit: ProFeatureWithoptionsRedefine NO_OPTS");
  const ProError status = ProFeatureWithoptionsRedefine(nullptr, &feature_, extracted_.tree(),
                                                        options_.As<ProFeatureCreateOptions>(), 0, &errors_);
  LogOperation(Format(L"Sketch Commit: redefine status=%d errCount=%d", status, errors_.error_number));
  return status == PRO_TK_NO_ERROR;
}

// The feature is complete: it belongs to the session, unless it can't have the session's name.
CreoMcpOperationResult Attempt::FinishFeature() {
  session_.feature = feature_;
  session_.has_feature = true;
  incomplete_exists_ = false;

  if (auto named = NameSketchFeature(session_); !named.success) {
    extracted_.FreeWithFeature();
    DeleteFeature(feature_.id);
    session_.feature = {};
    session_.has_feature = false;
    return named;
  }
  ProSolidRegenerate(static_cast<ProSolid>(session_.model), 0);
  ProWindowRepaint(-1);
  return MakeSuccessResult(L"Sketch committed.");
}

ProError Attempt::DeleteFeature(int id) {
  return ProFeatureDelete(static_cast<ProSolid>(session_.model), &id, 1, nullptr, 0);
}

void Attempt::CleanUp(bool failed) {
  if (failed && incomplete_exists_) {
    LogOperation(L"Sketch Commit: deleting incomplete feature after failure/retry");
    incomplete_exists_ = DeleteFeature(feature_.id) != PRO_TK_NO_ERROR;
    ProWindowRepaint(-1);
  }
  options_.reset();
  if (session_.has_feature || incomplete_exists_)
    extracted_.FreeWithFeature();
  else
    extracted_.FreeAsElement();
  if (tree_) tree_->FreeTree();
  plane_.reset();
  orientation_.reset();
  model_.reset();
  if (tree_) tree_->FreeReferences();
}

}  // namespace

std::optional<CreoMcpOperationResult> AttemptCommit(SketchSession& session) {
  Attempt attempt(session);
  auto outcome = attempt.Run();
  attempt.CleanUp(!outcome || !outcome->success);
  return outcome;
}

}  // namespace vek::sketch

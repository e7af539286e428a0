// The making of one sweep feature, from the incomplete feature to the complete one.
#pragma once

#include <ProFeature.h>
#include <ProMdl.h>

#include <optional>
#include <string>

#include "addin/host/extracted_tree.h"
#include "addin/host/references.h"
#include "addin/server/operation_result.h"

namespace vek::feature {

// What the client asked for.
struct SweepRequest {
  std::wstring profile_name;
  std::wstring path_name;
};

// An incomplete sweep that stands in the model.
class SweepRun {
 public:
  // `profile` is the section to be swept; `start_plane` may give the section its start direction. What the
  // feature comes to refer to joins `references`.
  SweepRun(ProMdl model, const ProFeature& feature, ProSection profile,
           std::optional<ProModelitem> start_plane, OwnedReferences& references)
      : model_(model),
        feature_(feature),
        profile_(profile),
        start_plane_(start_plane),
        references_(references) {}

  // Fills the section in and completes the feature. On failure the feature still stands.
  CreoMcpOperationResult Complete(const SweepRequest& request);

  // Gives the feature's tree back, which must come before the feature is deleted.
  void FreeTree() { tree_.FreeWithFeature(); }

 private:
  CreoMcpOperationResult ExtractSectionHandle();
  bool TakeSection();
  CreoMcpOperationResult FillSection();
  CreoMcpOperationResult ClimbLadder(const SweepRequest& request);
  CreoMcpOperationResult PrepareUserStart();

  ProError ClearStartDirection();
  ProError SetUserStartDirection();
  void StoreSection();
  void SetSectionMethod();

  // One rung: redefines the feature from the tree as it is. `option` is one of the host's creation options.
  ProError Redefine(int option, const wchar_t* label);
  void RedefineWithoutOptions();
  struct Outcome {
    ProError status = PRO_TK_NO_ERROR;
    int errors = 0;
  };
  Outcome RedefineWith(ProFeatureCreateOptions* options);
  bool IsDone() const { return last_status_ == PRO_TK_NO_ERROR && incomplete_ != 1; }

  ProMdl model_;
  ProFeature feature_;
  ProSection profile_;
  std::optional<ProModelitem> start_plane_;
  OwnedReferences& references_;
  ExtractedTree tree_;
  ProElement section_element_ = nullptr;
  ProSection section_ = nullptr;
  ProError last_status_ = PRO_TK_NO_ERROR;
  int incomplete_ = 1;
};

}  // namespace vek::feature

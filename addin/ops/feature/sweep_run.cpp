#include "addin/ops/feature/sweep_run.h"

#include "addin/host/owned.h"
#include "addin/ops/feature/sweep_section.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek::feature {
namespace {

// Ways through a sweep's tree.
constexpr int kSketcher[] = {3164, 897, 458};
constexpr int kSectionMethod[] = {3164, 897, 725};
constexpr int kUserStart[] = {3165, 1159, 1649};
constexpr int kStartReference[] = {3165, 1159, 1648, 3252, 3253};
constexpr int kStartFlip[] = {3165, 1159, 1648, 3252, 3254};

constexpr int kSketchedSection = 25;
constexpr int kDefaultStart = 0;
constexpr int kUserStartDirection = 134217728;
constexpr int kFlipped = 1;

// The redefinitions' options.
constexpr int kMayStayIncomplete = 2;
constexpr int kPlain = 0;
constexpr int kDefineMissing = 1;

}  // namespace

CreoMcpOperationResult SweepRun::Complete(const SweepRequest& request) {
  if (auto found = ExtractSectionHandle(); !found.success) return found;
  if (auto filled = FillSection(); !filled.success) return filled;
  return ClimbLadder(request);
}

// The section in the tree as it was extracted last.
bool SweepRun::TakeSection() {
  section_ = nullptr;
  if (tree_.Follow(kSketcher, section_element_) != PRO_TK_NO_ERROR) section_element_ = nullptr;
  if (section_element_ == nullptr) return false;
  return ExtractedTree::SectionOf(section_element_, section_) == PRO_TK_NO_ERROR && section_ != nullptr;
}

CreoMcpOperationResult SweepRun::ExtractSectionHandle() {
  if (tree_.Extract(feature_) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Sweep incomplete feature created but section extract failed.");
  if (TakeSection()) return MakeSuccessResult();
  // A redefinition lets the host make the section that is missing.
  Redefine(kMayStayIncomplete, L"INIT-SKETCHER");
  if (tree_.Extract(feature_) != PRO_TK_NO_ERROR || !TakeSection())
    return MakeFailureResult(L"Sweep section PRO_E_SKETCHER was not initialized.");
  return MakeSuccessResult();
}

CreoMcpOperationResult SweepRun::FillSection() {
  if (!DrawCrossSection(model_, profile_, section_))
    return MakeFailureResult(L"Failed to create sweep cross-section geometry on trajectory crosshairs.");
  StoreSection();
  SetSectionMethod();
  LogOperation(Format(L"Feature Sweep: section entity count=%d", CountEntities(section_)));
  return MakeSuccessResult();
}

void SweepRun::StoreSection() {
  if (section_ != nullptr) ProElementSpecialvalueSet(section_element_, section_);
}

void SweepRun::SetSectionMethod() {
  if (tree_.SetInteger(kSectionMethod, kSketchedSection) == PRO_TK_NO_ERROR)
    LogOperation(L"Feature Sweep: set section METHOD=PRO_SEC_SKETCH");
}

ProError SweepRun::ClearStartDirection() {
  const ProError status = tree_.SetInteger(kUserStart, kDefaultStart);
  if (status != PRO_TK_NO_ERROR) return status;
  if (tree_.Remove(kStartReference) == PRO_TK_NO_ERROR)
    LogOperation(L"Feature Sweep: removed FRM_START_X DIRECTION_REFERENCE");
  LogOperation(L"Feature Sweep: set FRM_USER_X=DEFAULT_START_X");
  return PRO_TK_NO_ERROR;
}

ProError SweepRun::SetUserStartDirection() {
  if (tree_.SetInteger(kUserStart, kUserStartDirection) != PRO_TK_NO_ERROR) return PRO_TK_GENERAL_ERROR;
  OwnedReference reference;
  ProError status = MakeReference(*start_plane_, reference);
  if (status == PRO_TK_NO_ERROR) {
    status = tree_.SetReference(kStartReference, reference.get());
    references_.push_back(std::move(reference));
  }
  // Without a flip the host takes the direction as it is.
  tree_.SetInteger(kStartFlip, kFlipped);
  LogOperation(Format(L"Feature Sweep: set FRM_USER_X=USER_START_X dir status=%d", status));
  return status;
}

SweepRun::Outcome SweepRun::RedefineWith(ProFeatureCreateOptions* options) {
  ProErrorlist errors{};
  Outcome outcome;
  outcome.status = ProFeatureWithoptionsRedefine(nullptr, &feature_, tree_.tree(), options, 0, &errors);
  outcome.errors = errors.error_number;
  ProBoolean incomplete = PRO_B_TRUE;
  ProFeatureIsIncomplete(&feature_, &incomplete);
  incomplete_ = static_cast<int>(incomplete);
  last_status_ = outcome.status;
  return outcome;
}

ProError SweepRun::Redefine(int option, const wchar_t* label) {
  OwnedArray<int> options;
  if (options.Allocate(1) != PRO_TK_NO_ERROR || !options) return last_status_ = PRO_TK_GENERAL_ERROR;
  options[0] = option;
  const Outcome outcome = RedefineWith(options.As<ProFeatureCreateOptions>());
  LogOperation(Format(L"Feature Sweep redefine(%s): status=%d errCount=%d incomplete=%d featId=%d", label,
                      outcome.status, outcome.errors, incomplete_, feature_.id));
  return outcome.status;
}

void SweepRun::RedefineWithoutOptions() {
  OwnedArray<int> options;
  if (options.Allocate(0) != PRO_TK_NO_ERROR || !options) return;
  SetSectionMethod();
  StoreSection();
  const Outcome outcome = RedefineWith(options.As<ProFeatureCreateOptions>());
  LogOperation(Format(L"Feature Sweep redefine(EMPTY_OPTS): status=%d errCount=%d incomplete=%d",
                      outcome.status, outcome.errors, incomplete_));
}

// Gives the section a start direction of its own, in a tree that shows what the host has made of the feature
// so far.
CreoMcpOperationResult SweepRun::PrepareUserStart() {
  if (tree_.Extract(feature_) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Sweep re-extract failed before USER_START_X.");
  if (TakeSection()) {
    if (CountDrawnEntities(section_) == 0) {
      LogOperation(L"Feature Sweep: re-extract lost section geometry; rebuilding");
      DrawCrossSection(model_, profile_, section_);
    }
    StoreSection();
  }
  SetSectionMethod();
  SetUserStartDirection();
  return MakeSuccessResult();
}

CreoMcpOperationResult SweepRun::ClimbLadder(const SweepRequest& request) {
  ClearStartDirection();
  Redefine(kMayStayIncomplete, L"SECTION+DEFAULT_X");
  if (IsDone()) return MakeSuccessResult();
  if (start_plane_) {
    if (auto prepared = PrepareUserStart(); !prepared.success) return prepared;
    Redefine(kMayStayIncomplete, L"SECTION+USER_X");
    if (IsDone()) return MakeSuccessResult();
  }
  if (last_status_ == PRO_TK_NO_ERROR) {
    SetSectionMethod();
    StoreSection();
    Redefine(kPlain, L"COMPLETE");
    if (IsDone()) return MakeSuccessResult();
  }
  SetSectionMethod();
  StoreSection();
  Redefine(kDefineMissing, L"DEFINE_MISS");
  if (IsDone()) return MakeSuccessResult();
  RedefineWithoutOptions();
  if (IsDone()) return MakeSuccessResult();
  return MakeFailureResult(
      Format(L"Creo could not complete the sweep from profile '%s' along path '%s' (status=%d, "
             L"incomplete=%d). Check D:\\VekCreoAddin.log.",
             request.profile_name, request.path_name, last_status_, incomplete_));
}

}  // namespace vek::feature

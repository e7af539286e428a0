#include "addin/ops/sketch/commit.h"

#include <ProWindows.h>

#include "addin/ops/sketch/commit_attempt.h"
#include "addin/ops/sketch/planes.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek::sketch {
namespace {

CreoMcpOperationResult DiscardEmptySketch(SketchSession& session) {
  if (!DiscardSketchFeature(session)) return MakeFailureResult(L"Failed to discard empty sketch feature.");
  LogOperation(L"Sketch Commit: empty session discarded (no feature)");
  return MakeSuccessResult(L"Empty sketch discarded.");
}

// Brings the references into the form that the first attempt uses. A plane in either form serves as it is,
// surfaces being preferred.
bool SettleReferences(SketchSession& session) {
  if (session.plane_item.type == kSurfaceItem) return true;
  const bool was_datum = session.plane_item.type == kDatumPlaneItem;
  if (ResolvePlaneRefs(session, PlaneForm::kSurface) || was_datum) return true;
  return ResolvePlaneRefs(session, PlaneForm::kDatum);
}

// At most two attempts; the second takes plane references of the form that the first did not.
CreoMcpOperationResult CommitInAttempts(SketchSession& session, ProType remembered) {
  if (auto outcome = AttemptCommit(session)) return *outcome;

  LogOperation(L"Sketch Commit: retry with alternate plane/orient ref type");
  const bool had_surface = remembered == kSurfaceItem || session.plane_item.type == kSurfaceItem;
  if (!ResolvePlaneRefs(session, had_surface ? PlaneForm::kDatum : PlaneForm::kSurface))
    return MakeFailureResult(L"Failed to commit sketch feature.");
  if (auto outcome = AttemptCommit(session)) return *outcome;
  return MakeFailureResult(L"Sketch feature created but Creo did not provide a PRO_E_SKETCHER section.");
}

}  // namespace

bool DiscardSketchFeature(SketchSession& session) {
  if (!session.has_feature) return true;
  LogOperation(Format(L"Sketch Discard: deleting feature id=%d name='%s'", session.feature.id, session.name));
  int id = session.feature.id;
  const ProError status = ProFeatureDelete(static_cast<ProSolid>(session.model), &id, 1, nullptr, 0);
  session.feature = {};
  session.has_feature = false;
  if (status != PRO_TK_NO_ERROR) {
    LogOperation(Format(L"Sketch Discard: ProFeatureDelete status=%d", status));
    return false;
  }
  ProWindowRepaint(-1);
  return true;
}

CreoMcpOperationResult CommitSketch(SketchSession& session) {
  LogOperation(Format(L"Sketch Commit BEGIN name='%s' entities=%d hasSection=%d hasFeature=%d plane='%s'",
                      session.name, static_cast<int>(session.entities.size()),
                      static_cast<int>(session.has_section), static_cast<int>(session.has_feature),
                      session.plane_name));
  if (!session.has_section) return MakeFailureResult(L"Sketch session has no section.");
  if (session.entities.empty()) return DiscardEmptySketch(session);
  LogItem(L"Commit planeItem", session.plane_item);
  LogItem(L"Commit orientItem", session.orient_item);
  if (!session.has_orient) return MakeFailureResult(L"Sketch orientation reference is required.");

  // The new feature is to have the old one's name, so the old one goes first.
  DiscardSketchFeature(session);
  const ProType remembered = session.plane_item.type;
  if (!SettleReferences(session))
    return MakeFailureResult(L"Failed to resolve sketch plane/orient references.");

  CreoMcpOperationResult result = CommitInAttempts(session, remembered);
  LogOperation(Format(L"Sketch Commit END name='%s' success=%s hasFeature=%d message=%s", session.name,
                      result.success ? L"true" : L"false", static_cast<int>(session.has_feature),
                      result.message));
  return result;
}

}  // namespace vek::sketch

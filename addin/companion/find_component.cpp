#include "addin/companion/find_component.h"

#include <string>

#include "addin/companion/companion_app.h"
#include "addin/companion/face_measurement.h"
#include "addin/companion/picking.h"
#include "addin/companion/send_outcome.h"
#include "addin/companion/web_client.h"
#include "addin/host/show_message.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek {
namespace {

constexpr int kNoFaceSelected = -4;

// The kinds of models whose faces can be measured.
bool IsMeasured(int result) {
  return result == 1 || result == 2 || result == 5;
}

}  // namespace

int MeasureFromSelectionBuffer(FaceMeasurement& measurement) {
  ProMdl model = nullptr;
  if (const ProError status = ProMdlCurrentGet(&model); status != PRO_TK_NO_ERROR) return status;
  OwnedSelections selections;
  int count = 0;
  if (const ProError status = SelectionsInBuffer(selections, count); status != PRO_TK_NO_ERROR) return status;
  if (count == 0) return kNoFaceSelected;
  ProModelitem item{};
  const ProSelection face = FirstFace(selections, count, item);
  return face ? MeasureFace(model, face, measurement) : kNoFaceSelected;
}

int MeasureSelectedFace(FaceMeasurement& measurement) {
  if (const int result = MeasureFromSelectionBuffer(measurement); IsMeasured(result)) {
    LogShell(L"Successfully processed current face selection without prompting user");
    return result;
  }
  LogShell(L"No current face selection found, prompting user to select face");
  ProMdl model = nullptr;
  if (const ProError status = ProMdlCurrentGet(&model); status != PRO_TK_NO_ERROR) return status;
  LogShell(Format(L"Detected unit type: %s", DetectModelUnit(model)));
  OwnedSelections selections;
  int count = 0;
  const ProError status = AskForFace(selections, count);
  if (status != PRO_TK_NO_ERROR || count < 1) return status;
  return MeasureFace(model, selections.get()[0], measurement);
}

void CommandFindComponent() {
  FaceMeasurement measurement;
  if (!IsMeasured(MeasureSelectedFace(measurement))) return ShowMessage(L"No faces selected");
  if (!IsCompanionRunning()) return TurnOnCompanion();
  VekWebClient().SendFaceMeasurement(measurement, LogSuccess(L"Measurement data sent successfully"),
                                     LogError(L"Error sending measurement data: "));
}

}  // namespace vek

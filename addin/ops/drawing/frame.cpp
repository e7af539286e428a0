#include "addin/ops/drawing/frame.h"

#include <ProWindows.h>

#include <cmath>
#include <utility>

#include "addin/ops/common/model_access.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek::drawing {
namespace {

constexpr ActiveModelWords kActiveModelWords = {
    L"No active Creo document.",
    L"Failed to determine active document type.",
    L"Drawing operations require an active drawing document. Activate a drawing first.",
};

}  // namespace

CreoMcpOperationResult RequireActiveDrawing(ProDrawing& drawing) {
  ProMdl model = nullptr;
  auto active = RequireActiveModelOfType(kDrawingType, kActiveModelWords, model);
  drawing = static_cast<ProDrawing>(model);
  return active;
}

CreoMcpOperationResult ShowDrawing(ProDrawing drawing) {
  if (drawing == nullptr) return MakeFailureResult(L"Drawing handle is null.");
  if (const ProError status = ProMdlDisplay(drawing); status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to display drawing (status=%d).", status));
  int window = -1;
  if (ProMdlWindowGet(drawing, &window) == PRO_TK_NO_ERROR) {
    ProWindowActivate(window);
    ProWindowRepaint(window);
  }
  return MakeSuccessResult();
}

CreoMcpOperationResult OpenActiveDrawing(ProDrawing& drawing) {
  if (auto active = RequireActiveDrawing(drawing); !active.success) return active;
  return ShowDrawing(drawing);
}

int CurrentSheet(ProDrawing drawing) {
  int sheet = 0;
  if (ProDrawingCurrentSheetGet(drawing, &sheet) != PRO_TK_NO_ERROR || sheet < 1) return 1;
  return sheet;
}

double PositiveOr(double value, double default_value) {
  return value > 0 && std::isfinite(value) ? value : default_value;
}

void LogDrawing(std::wstring_view message) {
  LogOperation(Format(L"CreoMcpDrawing: %s", message));
}

CreoMcpOperationResult LoggedSuccess(std::wstring message, std::wstring dataJson) {
  LogDrawing(message);
  return MakeSuccessResult(std::move(message), std::move(dataJson));
}

}  // namespace vek::drawing

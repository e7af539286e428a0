#include "addin/ops/drawing/base_view.h"

#include "addin/ops/common/model_access.h"
#include "addin/ops/drawing/drawing_source.h"
#include "addin/ops/drawing/frame.h"
#include "addin/ops/drawing/orientation.h"
#include "addin/ops/drawing/views.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::drawing {
namespace {

// The model stands in the drawing already.
constexpr int kAlreadyAdded = -39;

struct BaseViewRequest {
  std::wstring orientation;
  double scale = 1;
  SheetPoint at{100, 150};
  std::wstring model_path;
};

BaseViewRequest ReadRequest(const std::wstring& arguments) {
  BaseViewRequest request;
  request.orientation = JsonReadStringArgument(arguments, L"orientation");
  if (request.orientation.empty()) request.orientation = L"front";
  JsonReadNumber(arguments, L"scale", request.scale);
  request.scale = PositiveOr(request.scale, 1);
  JsonReadNumber(arguments, L"x_mm", request.at.x);
  JsonReadNumber(arguments, L"y_mm", request.at.y);
  request.model_path = JsonReadStringArgument(arguments, L"model_path");
  return request;
}

// Places the view; `canonical` is the word of its orientation.
CreoMcpOperationResult PlaceBaseView(ProDrawing drawing, ProMdl model, const BaseViewRequest& request,
                                     ProView& view, std::wstring& canonical) {
  if (drawing == nullptr || model == nullptr) return MakeFailureResult(L"Drawing or solid is null.");
  const auto solid = static_cast<ProSolid>(model);
  const ProError added = ProDrawingSolidAdd(drawing, solid);
  if (added != PRO_TK_NO_ERROR && added != kAlreadyAdded)
    return MakeFailureResult(Format(L"Failed to add model to drawing (status=%d).", added));

  ProMatrix orientation;
  if (!OrientationMatrix(request.orientation, orientation, canonical))
    return MakeFailureResult(
        Format(L"Unsupported orientation '%s'. Expected front, top, right, or iso.", request.orientation));
  SheetPosition position(request.at);
  view = nullptr;
  const ProError status =
      ProDrawingGeneralviewCreate(drawing, solid, CurrentSheet(drawing), PRO_B_FALSE, position.coordinates,
                                  request.scale, orientation, &view);
  if (status != PRO_TK_NO_ERROR || view == nullptr)
    return MakeFailureResult(Format(L"Failed to create base view (status=%d).", status));
  return MakeSuccessResult();
}

// The drawing knows its model from its first view on.
void SettlePendingSource(ProDrawing drawing) {
  const std::wstring name = ModelName(drawing);
  if (name.empty() || EqualsIgnoreCase(name, PendingSource().drawing_name))
    PendingSource() = PendingDrawingSource();
}

CreoMcpOperationResult AddBaseView(const std::wstring& arguments) {
  ProDrawing drawing = nullptr;
  if (auto opened = OpenActiveDrawing(drawing); !opened.success) return opened;
  const BaseViewRequest request = ReadRequest(arguments);
  ProMdl model = nullptr;
  if (auto resolved = ResolveBaseViewModel(drawing, request.model_path, model); !resolved.success)
    return resolved;
  ProView view = nullptr;
  std::wstring canonical;
  if (auto placed = PlaceBaseView(drawing, model, request, view, canonical); !placed.success) return placed;
  SettlePendingSource(drawing);

  const std::wstring name = ViewName(drawing, view);
  return LoggedSuccess(
      Format(L"Base view '%s' added: %s, scale %g:1.", name, canonical, request.scale),
      Format(LR"({"view_name":"%s","model_path":"%s"})", JsonEscape(name), JsonEscape(SourcePath(model))));
}

}  // namespace

void RegisterBaseViewOperation(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_drawing_add_base_view", AddBaseView);
}

}  // namespace vek::drawing

#include "addin/ops/drawing/projected_view.h"

#include "addin/ops/drawing/frame.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"

namespace vek::drawing {
namespace {

// From the parent's centre, in the sheet's units.
constexpr double kProjectedViewGap = 100;

CreoMcpOperationResult AddProjectedView(const std::wstring& arguments) {
  ProDrawing drawing = nullptr;
  if (auto opened = OpenActiveDrawing(drawing); !opened.success) return opened;
  std::wstring direction = JsonReadStringArgument(arguments, L"direction");
  if (direction.empty()) direction = L"top";
  std::wstring parent_name;
  ViewInfo parent;
  if (auto found = FindViewOfArgument(drawing, arguments, L"parent_view_name", parent_name, parent);
      !found.success)
    return found;

  const SheetPoint centre = ViewCentre(drawing, parent.view, kFallbackCentre);
  ProView view = nullptr;
  const ProError status =
      CreateProjectedView(drawing, parent.view, Toward(direction, centre, kProjectedViewGap), view);
  if (status != PRO_TK_NO_ERROR || view == nullptr)
    return MakeFailureResult(
        Format(L"Failed to create projected view from '%s' (status=%d).", parent_name, status));

  const std::wstring name = ViewName(drawing, view);
  return LoggedSuccess(Format(L"Projected view '%s' added (%s of '%s').", name, direction, parent_name),
                       ViewNameData(name));
}

}  // namespace

ProError CreateProjectedView(ProDrawing drawing, ProView parent, const SheetPoint& at, ProView& view) {
  SheetPosition position(at);
  view = nullptr;
  return ProDrawingProjectedviewCreate(drawing, parent, PRO_B_FALSE, position.coordinates, &view);
}

void RegisterProjectedViewOperation(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_drawing_add_projected_view", AddProjectedView);
}

}  // namespace vek::drawing

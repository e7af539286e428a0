// The views of a drawing: the table on which all its operations stand, and what they ask of one view.
//
// Main thread only. Nothing is kept between two operations: each asks the host anew.
#pragma once

#include <ProDrawingView.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "addin/ops/drawing/view_placement.h"
#include "addin/server/operation_result.h"

namespace vek::drawing {

// One view on a sheet.
struct ViewInfo {
  ProView view = nullptr;
  std::wstring name;
  std::wstring type;  // as ViewTypeWord tells it
  double scale = 1;
  std::int32_t sheet = 1;
};

// "General", "Projected", …; "Type%d" for a number that has no word.
std::wstring ViewTypeWord(int type);

// The views of the active sheet that have a name, in the host's order.
CreoMcpOperationResult CollectDrawingViews(ProDrawing drawing, std::vector<ViewInfo>& views);

// The view of that name on the active sheet, in any case.
CreoMcpOperationResult FindView(ProDrawing drawing, const std::wstring& name, ViewInfo& info);

// The view that the required argument `key` names. `name` is what the client wrote.
CreoMcpOperationResult FindViewOfArgument(ProDrawing drawing, const std::wstring& arguments,
                                          const std::wstring& key, std::wstring& name, ViewInfo& info);

// The outline of the view; false when the host doesn't tell.
bool ViewRectGet(ProDrawing drawing, ProView view, ViewRect& rect);

// The middle of the outline, or `fallback`.
SheetPoint ViewCentre(ProDrawing drawing, ProView view, const SheetPoint& fallback);

// Empty when the host doesn't tell.
std::wstring ViewName(ProDrawing drawing, ProView view);

// The model that the view shows.
CreoMcpOperationResult ResolveViewSolid(ProDrawing drawing, ProView view, ProSolid& solid);

// A point as calls take it.
struct SheetPosition {
  explicit SheetPosition(const SheetPoint& point) : coordinates{point.x, point.y, 0} {}
  ProPoint3d coordinates;
};

// The data that new views are reported with: {"view_name":"…"}.
std::wstring ViewNameData(std::wstring_view name);

}  // namespace vek::drawing

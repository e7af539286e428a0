#include "addin/ops/drawing/views.h"

#include <algorithm>

#include "addin/host/owned.h"
#include "addin/host/text_buffer.h"
#include "addin/ops/drawing/frame.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::drawing {
namespace {

struct TypeWord {
  int type;
  const wchar_t* word;
};

constexpr TypeWord kTypeWords[] = {
    {0, L"General"}, {1, L"Projected"},    {2, L"Auxiliary"}, {3, L"Detail"},
    {4, L"Revolve"}, {6, L"CopyAndAlign"}, {8, L"FlatPly"},
};

std::wstring TypeOf(ProDrawing drawing, ProView view) {
  ProViewType type{};
  if (ProDrawingViewTypeGet(drawing, view, &type) != PRO_TK_NO_ERROR) return L"Unknown";
  return ViewTypeWord(type);
}

// What the table holds of a view; nothing for one on another sheet or without a name.
std::optional<ViewInfo> Describe(ProDrawing drawing, ProView view, int current_sheet) {
  int sheet = 0;
  if (ProDrawingViewSheetGet(drawing, view, &sheet) == PRO_TK_NO_ERROR && sheet != current_sheet)
    return std::nullopt;

  ViewInfo info;
  info.view = view;
  info.sheet = sheet > 0 ? sheet : current_sheet;
  info.name = ViewName(drawing, view);
  info.type = TypeOf(drawing, view);
  double scale = 1;
  if (ProDrawingViewScaleGet(drawing, view, &scale) == PRO_TK_NO_ERROR) info.scale = scale;
  if (info.name.empty()) return std::nullopt;
  return info;
}

}  // namespace

std::wstring ViewTypeWord(int type) {
  const auto row = std::ranges::find(kTypeWords, type, &TypeWord::type);
  return row != std::end(kTypeWords) ? row->word : Format(L"Type%d", type);
}

CreoMcpOperationResult CollectDrawingViews(ProDrawing drawing, std::vector<ViewInfo>& views) {
  views.clear();
  OwnedArray<ProView> collected;
  const ProError status = ProDrawingViewsCollect(drawing, collected.out());
  if (status == PRO_TK_E_NOT_FOUND) return MakeSuccessResult();
  if (status != PRO_TK_NO_ERROR || !collected)
    return MakeFailureResult(Format(L"Failed to collect drawing views (status=%d).", status));

  const int current_sheet = CurrentSheet(drawing);
  for (int i = 0; i < collected.size(); ++i) {
    if (collected[i] == nullptr) continue;
    if (auto info = Describe(drawing, collected[i], current_sheet)) views.push_back(std::move(*info));
  }
  return MakeSuccessResult();
}

CreoMcpOperationResult FindView(ProDrawing drawing, const std::wstring& name, ViewInfo& info) {
  if (name.empty()) return MakeFailureResult(L"'parent_view_name' / 'view_name' is required.");
  std::vector<ViewInfo> views;
  if (auto collected = CollectDrawingViews(drawing, views); !collected.success) return collected;
  const auto found =
      std::ranges::find_if(views, [&](const ViewInfo& view) { return EqualsIgnoreCase(view.name, name); });
  if (found == views.end())
    return MakeFailureResult(Format(L"View '%s' not found on the active sheet.", name));
  info = *found;
  return MakeSuccessResult();
}

CreoMcpOperationResult FindViewOfArgument(ProDrawing drawing, const std::wstring& arguments,
                                          const std::wstring& key, std::wstring& name, ViewInfo& info) {
  name = JsonReadStringArgument(arguments, key);
  if (name.empty()) return MakeFailureResult(Format(L"'%s' is required.", key));
  return FindView(drawing, name, info);
}

bool ViewRectGet(ProDrawing drawing, ProView view, ViewRect& rect) {
  ProPoint3d corners[2] = {};
  if (ProDrawingViewOutlineGet(drawing, view, corners) != PRO_TK_NO_ERROR) return false;
  const auto [min_x, max_x] = std::minmax(corners[0][0], corners[1][0]);
  const auto [min_y, max_y] = std::minmax(corners[0][1], corners[1][1]);
  rect = {min_x, max_x, min_y, max_y};
  return true;
}

SheetPoint ViewCentre(ProDrawing drawing, ProView view, const SheetPoint& fallback) {
  ViewRect rect;
  return ViewRectGet(drawing, view, rect) ? rect.Centre() : fallback;
}

std::wstring ViewName(ProDrawing drawing, ProView view) {
  ProName name{};
  return ProDrawingViewNameGet(drawing, view, name) == PRO_TK_NO_ERROR ? BufferText(name) : std::wstring();
}

CreoMcpOperationResult ResolveViewSolid(ProDrawing drawing, ProView view, ProSolid& solid) {
  solid = nullptr;
  if (ProDrawingViewSolidGet(drawing, view, &solid) != PRO_TK_NO_ERROR || solid == nullptr)
    return MakeFailureResult(L"Failed to resolve the solid model for the parent view.");
  return MakeSuccessResult();
}

std::wstring ViewNameData(std::wstring_view name) {
  return Format(LR"({"view_name":"%s"})", JsonEscape(name));
}

}  // namespace vek::drawing

#include "addin/ops/drawing/view_listing.h"

#include "addin/ops/drawing/frame.h"
#include "addin/ops/drawing/views.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"

namespace vek::drawing {
namespace {

CreoMcpOperationResult ListViews(const std::wstring&) {
  ProDrawing drawing = nullptr;
  if (auto active = RequireActiveDrawing(drawing); !active.success) return active;
  std::vector<ViewInfo> views;
  if (auto collected = CollectDrawingViews(drawing, views); !collected.success) return collected;

  std::wstring list;
  for (const ViewInfo& info : views) {
    if (!list.empty()) list += L',';
    list += Format(LR"({"name":"%s","type":"%s","scale":%g})", JsonEscape(info.name), JsonEscape(info.type),
                   info.scale);
  }
  return MakeSuccessResult(
      Format(L"%d view(s) on active sheet %d.", static_cast<int>(views.size()), CurrentSheet(drawing)),
      Format(L"[%s]", list));
}

}  // namespace

void RegisterViewListingOperation(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_drawing_list_views", ListViews);
}

}  // namespace vek::drawing

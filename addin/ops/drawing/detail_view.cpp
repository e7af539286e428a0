#include "addin/ops/drawing/detail_view.h"

#include <ProSelection.h>

#include <algorithm>

#include "addin/host/visits.h"
#include "addin/ops/drawing/detail_spline.h"
#include "addin/ops/drawing/frame.h"
#include "addin/ops/drawing/views.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"

namespace vek::drawing {
namespace {

constexpr double kDefaultRadius = 20;
constexpr double kDefaultScale = 2;

// Half the side of the square that is kept free for a detail: its circle, or at least the least size, and the
// margin around it.
constexpr double kLeastHalfSize = 40;
constexpr double kMargin = 25;

struct DetailRequest {
  std::optional<double> cx;
  std::optional<double> cy;
  double radius = kDefaultRadius;
  double scale = kDefaultScale;
};

std::optional<double> ReadOptional(const std::wstring& arguments, const std::wstring& key) {
  double value = 0;
  if (!JsonReadNumber(arguments, key, value)) return std::nullopt;
  return value;
}

DetailRequest ReadRequest(const std::wstring& arguments) {
  DetailRequest request{ReadOptional(arguments, L"cx_mm"), ReadOptional(arguments, L"cy_mm")};
  JsonReadNumber(arguments, L"radius_mm", request.radius);
  request.radius = PositiveOr(request.radius, kDefaultRadius);
  JsonReadNumber(arguments, L"scale", request.scale);
  request.scale = PositiveOr(request.scale, kDefaultScale);
  return request;
}

// What is enlarged: the point that was asked for, or the view's centre when that point is none of its.
SheetPoint DetailCentre(ProDrawing drawing, ProView parent, const DetailRequest& request) {
  const SheetPoint middle = ViewCentre(drawing, parent, {0, 0});
  const SheetPoint centre{request.cx.value_or(middle.x), request.cy.value_or(middle.y)};
  ViewRect rect;
  if (!ViewRectGet(drawing, parent, rect) || rect.Holds(centre)) return centre;
  LogDrawing(
      Format(L"detail center (%.1f,%.1f) outside view outline [%.1f..%.1f, %.1f..%.1f]; using view center.",
             centre.x, centre.y, rect.min_x, rect.max_x, rect.min_y, rect.max_y));
  return middle;
}

CreoMcpOperationResult FindReferenceSurface(ProSolid solid, ProGeomitem& item) {
  ProSurface first = nullptr;
  VisitSurfaces(solid, [&first](ProSurface surface, ProError) {
    if (first == nullptr) first = surface;
    return PRO_TK_NO_ERROR;
  });
  if (first == nullptr)
    return MakeFailureResult(L"Failed to find a surface on the model for the detail-view reference.");
  if (ProSurfaceToGeomitem(solid, first, &item) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to convert surface to geomitem for detail-view reference.");
  return MakeSuccessResult();
}

// What the detail hangs on: a surface of the model, at a point of the parent view.
CreoMcpOperationResult SelectReference(ProView parent, ProSolid solid, const SheetPoint& centre,
                                       OwnedSelection& selection) {
  ProGeomitem item{};
  if (auto found = FindReferenceSurface(solid, item); !found.success) return found;
  if (ProSelectionAlloc(nullptr, &item, selection.out()) != PRO_TK_NO_ERROR || !selection)
    return MakeFailureResult(L"Failed to allocate reference selection for detail view.");
  if (const ProError status = ProSelectionViewSet(parent, selection.inout()); status != PRO_TK_NO_ERROR) {
    selection.reset();
    return MakeFailureResult(Format(L"Failed to bind detail reference to parent view (status=%d).", status));
  }
  SheetPosition position(centre);
  if (const ProError status = ProSelectionPoint3dSet(position.coordinates, selection.inout());
      status != PRO_TK_NO_ERROR) {
    selection.reset();
    return MakeFailureResult(Format(L"Failed to set detail reference point (status=%d).", status));
  }
  return MakeSuccessResult();
}

// A free place near the parent for a view with these half sizes.
SheetPoint FindPlacement(ProDrawing drawing, ProView parent, double half_w, double half_h) {
  ViewRect parent_rect;
  if (!ViewRectGet(drawing, parent, parent_rect)) parent_rect = kFallbackRect;
  std::vector<ViewInfo> views;
  CollectDrawingViews(drawing, views);
  std::vector<ViewRect> obstacles;
  for (const ViewInfo& info : views) {
    ViewRect rect;
    if (ViewRectGet(drawing, info.view, rect)) obstacles.push_back(rect);
  }

  const Placement placement = PlaceAround(parent_rect, half_w, half_h, obstacles);
  if (placement.clear)
    LogDrawing(Format(L"detail/section placement at (%.1f,%.1f) clear of %d views.", placement.point.x,
                      placement.point.y, static_cast<int>(obstacles.size())));
  else
    LogDrawing(L"no clear placement found; using right-of-parent fallback.");
  return placement.point;
}

ProError CreateDetailView(ProDrawing drawing, ProView parent, OwnedSelection& reference, DetailSpline& border,
                          const SheetPoint& at, ProView& view) {
  SheetPosition position(at);
  view = nullptr;
  const ProError status = ProDrawingViewDetailCreate(drawing, parent, reference.get(), &border.curve,
                                                     position.coordinates, &view);
  reference.reset();
  border.FreeArrays();
  return status;
}

CreoMcpOperationResult AddDetailView(const std::wstring& arguments) {
  ProDrawing drawing = nullptr;
  if (auto opened = OpenActiveDrawing(drawing); !opened.success) return opened;
  const DetailRequest request = ReadRequest(arguments);
  std::wstring parent_name;
  ViewInfo parent;
  if (auto found = FindViewOfArgument(drawing, arguments, L"parent_view_name", parent_name, parent);
      !found.success)
    return found;

  const SheetPoint centre = DetailCentre(drawing, parent.view, request);
  ProSolid solid = nullptr;
  if (auto resolved = ResolveViewSolid(drawing, parent.view, solid); !resolved.success) return resolved;
  OwnedSelection reference;
  if (auto selected = SelectReference(parent.view, solid, centre, reference); !selected.success)
    return selected;
  DetailSpline border;
  if (auto built = BuildDetailSpline(centre, request.radius, border); !built.success) return built;

  const double half = std::max(kLeastHalfSize, request.scale * request.radius) + kMargin;
  const SheetPoint at = FindPlacement(drawing, parent.view, half, half);
  ProView view = nullptr;
  const ProError status = CreateDetailView(drawing, parent.view, reference, border, at, view);
  if (status != PRO_TK_NO_ERROR || view == nullptr)
    return MakeFailureResult(
        Format(L"Failed to create detail view (status=%d). Center=(%.1f,%.1f) radius=%.1f on '%s'.", status,
               centre.x, centre.y, request.radius, parent_name));
  ProDrawingViewScaleSet(drawing, view, request.scale);

  const std::wstring name = ViewName(drawing, view);
  return LoggedSuccess(
      Format(L"Detail view '%s' added (scale %g:1, center %.1f,%.1f r=%.1f, placed at %.1f,%.1f).", name,
             request.scale, centre.x, centre.y, request.radius, at.x, at.y),
      ViewNameData(name));
}

}  // namespace

void RegisterDetailViewOperation(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_drawing_add_detail_view", AddDetailView);
}

}  // namespace vek::drawing

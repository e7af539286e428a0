// Making views on drawings, and the curves that border details.
#include <ProDrawingView.h>

#include <cmath>

#include "bench/host/calls/array.h"
#include "bench/host/calls/drawing_handles.h"
#include "bench/host/calls/selection.h"
#include "bench/host/drawing/views.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/item_lookup.h"

namespace bench {
namespace {

constexpr int kSpline = 5;
constexpr int kFewestPoints = 2;

Vector2 InSheet(const ProPoint3d point) {
  return {point[0], point[1]};
}

// Runs what makes a view, and hands that out.
template <typename Make>
ProError HandOut(ProView* view, Make&& make) {
  DrawingView* made = nullptr;
  const ProError status = make(made);
  if (status == PRO_TK_NO_ERROR) *view = ViewHandle(*made);
  return status;
}

// Whether all arrays of a spline are alive and as long as it says.
bool HasArrays(const ProSplinedata& spline) {
  const auto holds = [&](const void* array, int size) {
    const auto count = array ? ArrayCount(array, size) : std::nullopt;
    return count && *count >= spline.num_points;
  };
  return holds(spline.par_arr, sizeof(double)) && holds(spline.pnt_arr, sizeof(ProPoint3d)) &&
         holds(spline.tan_arr, sizeof(ProVector));
}

// The reference of a detail: an item of what the parent shows, picked on the parent.
ProError CheckReference(ProSelection reference, const Drawing& drawing, const DrawingView& parent) {
  const ProModelitem* item = SelectedItem(reference);
  if (!item) return PRO_TK_INVALID_PTR;
  if (!ItemExists(*item)) return PRO_TK_E_NOT_FOUND;
  const SelectionPlace& place = PlaceSelected(reference);
  const bool is_on_parent = item->owner == drawing.SolidOf(parent) && place.view == parent.handle;
  return is_on_parent && place.point ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProDrawingGeneralviewCreate(ProDrawing drawing, ProSolid solid, int sheet, ProBoolean exploded,
                                     ProPoint3d point, double scale, ProMatrix orientation, ProView* view) {
  HOST_CALL(drawing, solid, sheet, static_cast<int>(exploded), scale) {
    Model* sheets = nullptr;
    Model* model = nullptr;
    if (!point || !orientation || !view) return PRO_TK_BAD_INPUTS;
    *view = nullptr;
    if (const ProError status = ResolveDrawing(drawing, sheets)) return status;
    if (const ProError status = Resolve(solid, model)) return status;
    if (exploded) return PRO_TK_NOT_IMPLEMENTED;
    GeneralViewRequest request{model, sheet, InSheet(point), scale, MatrixOf(orientation)};
    if (scale < 0) request.scale.reset();
    return HandOut(view, [&](DrawingView*& made) { return AddGeneralView(*sheets, request, made); });
  };
}

ProError ProDrawingProjectedviewCreate(ProDrawing drawing, ProView parent, ProBoolean exploded,
                                       ProPoint3d point, ProView* view) {
  HOST_CALL(drawing, parent, static_cast<int>(exploded)) {
    Model* sheets = nullptr;
    DrawingView* from = nullptr;
    if (!point || !view) return PRO_TK_BAD_INPUTS;
    *view = nullptr;
    if (const ProError status = ResolveView(drawing, parent, sheets, from)) return status;
    if (exploded) return PRO_TK_NOT_IMPLEMENTED;
    return HandOut(
        view, [&](DrawingView*& made) { return AddProjectedView(*sheets, *from, InSheet(point), made); });
  };
}

ProError ProDrawingViewDetailCreate(ProDrawing drawing, ProView parent, ProSelection reference,
                                    ProCurvedata* border, ProPoint3d point, ProView* view) {
  HOST_CALL(drawing, parent, reference) {
    Model* sheets = nullptr;
    DrawingView* from = nullptr;
    if (!reference || !border || !point || !view) return PRO_TK_BAD_INPUTS;
    *view = nullptr;
    if (const ProError status = ResolveView(drawing, parent, sheets, from)) return status;
    if (const ProError status = CheckReference(reference, *sheets->drawing, *from)) return status;
    if (border->type != kSpline || !HasArrays(border->spline)) return PRO_TK_BAD_INPUTS;
    const Vector3& picked = *PlaceSelected(reference).point;
    DetailRequest request{{picked[0], picked[1]}, {}, InSheet(point)};
    for (int i = 0; i < border->spline.num_points; ++i)
      request.spline.push_back(InSheet(border->spline.pnt_arr[i]));
    return HandOut(view, [&](DrawingView*& made) { return AddDetailView(*sheets, *from, request, made); });
  };
}

ProError ProSplinedataInit(double* parameters, ProPoint3d* points, ProVector* tangents, int count,
                           ProSplinedata* spline) {
  HOST_CALL(parameters, points, tangents, count) {
    if (!parameters || !points || !tangents || !spline || count < kFewestPoints) return PRO_TK_BAD_INPUTS;
    const ProSplinedata filled{kSpline, parameters, points, tangents, count};
    if (!HasArrays(filled)) return PRO_TK_BAD_INPUTS;
    for (int i = 0; i < count; ++i) {
      if (!std::isfinite(parameters[i]) || (i > 0 && !(parameters[i] > parameters[i - 1])))
        return PRO_TK_BAD_INPUTS;
      for (int axis = 0; axis < 3; ++axis)
        if (!std::isfinite(points[i][axis]) || !std::isfinite(tangents[i][axis])) return PRO_TK_BAD_INPUTS;
    }
    *spline = filled;
    return PRO_TK_NO_ERROR;
  };
}

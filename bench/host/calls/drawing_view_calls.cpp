// What is asked of views on drawings, and what is changed of them.
#include <ProAnnotation.h>
#include <ProDrawingView.h>

#include "bench/host/calls/array.h"
#include "bench/host/calls/drawing_handles.h"
#include "bench/host/drawing/projection.h"
#include "bench/host/drawing/views.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr int kWholeView = 1;
constexpr int kDrivingDimensions = 8;

// Hands a view of a drawing, with that drawing, to `read`.
template <typename Read>
ProError Ask(ProDrawing drawing, ProView view, const void* out, Read&& read) {
  Model* sheets = nullptr;
  DrawingView* found = nullptr;
  if (!out) return PRO_TK_BAD_INPUTS;
  if (const ProError status = ResolveView(drawing, view, sheets, found)) return status;
  return read(*sheets->drawing, *found);
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProDrawingViewsCollect(ProDrawing drawing, ProView** views) {
  HOST_CALL(drawing) {
    Model* sheets = nullptr;
    if (!views) return PRO_TK_BAD_INPUTS;
    *views = nullptr;
    if (const ProError status = ResolveDrawing(drawing, sheets)) return status;
    std::vector<ProView> found;
    for (const auto& view : sheets->drawing->views) found.push_back(ViewHandle(*view));
    if (found.empty()) return PRO_TK_E_NOT_FOUND;
    *views = NewArray(found);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProDrawingViewSheetGet(ProDrawing drawing, ProView view, int* sheet) {
  HOST_CALL(drawing, view) {
    return Ask(drawing, view, sheet, [&](const Drawing&, const DrawingView& found) {
      *sheet = found.sheet;
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProDrawingViewNameGet(ProDrawing drawing, ProView view, ProName name) {
  HOST_CALL(drawing, view) {
    return Ask(drawing, view, name, [&](const Drawing&, const DrawingView& found) {
      return CopyOut(found.name, *reinterpret_cast<ProName*>(name)) ? PRO_TK_NO_ERROR : PRO_TK_LINE_TOO_LONG;
    });
  };
}

ProError ProDrawingViewTypeGet(ProDrawing drawing, ProView view, ProViewType* type) {
  HOST_CALL(drawing, view) {
    return Ask(drawing, view, type, [&](const Drawing&, const DrawingView& found) {
      *type = static_cast<ProViewType>(found.type);
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProDrawingViewScaleGet(ProDrawing drawing, ProView view, double* scale) {
  HOST_CALL(drawing, view) {
    return Ask(drawing, view, scale, [&](const Drawing& sheets, const DrawingView& found) {
      *scale = sheets.ScaleOf(found);
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProDrawingViewScaleSet(ProDrawing drawing, ProView view, double scale) {
  HOST_CALL(drawing, view, scale) {
    Model* sheets = nullptr;
    DrawingView* found = nullptr;
    if (const ProError status = ResolveView(drawing, view, sheets, found)) return status;
    return SetScale(*sheets, *found, scale);
  };
}

ProError ProDrawingViewOutlineGet(ProDrawing drawing, ProView view, ProPoint3d outline[2]) {
  HOST_CALL(drawing, view) {
    return Ask(drawing, view, outline, [&](const Drawing& sheets, const DrawingView& found) {
      try {
        const Rectangle box = OutlineOf(sheets, found);
        for (int i = 0; i < 2; ++i) {
          outline[0][i] = box.low[i];
          outline[1][i] = box.high[i];
        }
        outline[0][2] = outline[1][2] = 0;
        return PRO_TK_NO_ERROR;
      } catch (const NoProjection& failure) {
        Complain(std::string("a view could not be projected: ") + failure.what());
        return PRO_TK_COMM_ERROR;
      }
    });
  };
}

ProError ProDrawingViewSolidGet(ProDrawing drawing, ProView view, ProSolid* solid) {
  HOST_CALL(drawing, view) {
    return Ask(drawing, view, solid, [&](const Drawing& sheets, const DrawingView& found) {
      Model* model = sheets.SolidOf(found);
      *solid = model ? SolidHandle(*model) : nullptr;
      return model ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
    });
  };
}

ProError ProDrawingView2DSectionSet(ProDrawing drawing, ProView view, ProName cross_section,
                                    ProDrawingViewSectionAreaType area, ProSelection reference,
                                    ProCurvedata* border, ProView arrows) {
  HOST_CALL(drawing, view, static_cast<const wchar_t*>(cross_section), static_cast<int>(area), arrows) {
    Model* sheets = nullptr;
    DrawingView* found = nullptr;
    if (!cross_section) return PRO_TK_BAD_INPUTS;
    if (const ProError status = ResolveView(drawing, view, sheets, found)) return status;
    if (static_cast<int>(area) != kWholeView) return PRO_TK_NOT_IMPLEMENTED;
    // These tell which part is cut, of a view that isn't cut whole.
    if (reference || border) return PRO_TK_BAD_INPUTS;
    const DrawingView* shown_on = arrows ? sheets->drawing->ViewOf(arrows) : nullptr;
    if (arrows && !shown_on) return PRO_TK_INVALID_PTR;
    if (shown_on == found) return PRO_TK_BAD_INPUTS;
    return SetSection(*sheets, *found, Bounded(cross_section, PRO_NAME_SIZE), shown_on);
  };
}

ProError ProAnnotationByViewShow(ProDrawing drawing, ProView view, ProAnnotationType type) {
  HOST_CALL(drawing, view, static_cast<int>(type)) {
    Model* sheets = nullptr;
    DrawingView* found = nullptr;
    if (const ProError status = ResolveView(drawing, view, sheets, found)) return status;
    if (static_cast<int>(type) != kDrivingDimensions) return PRO_TK_NOT_IMPLEMENTED;
    return ShowDimensions(*sheets, *found);
  };
}

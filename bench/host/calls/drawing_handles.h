// From the handles of callers to drawings and their views.
#pragma once

#include <ProDrawing.h>

#include "bench/host/instruments/handles.h"

namespace bench {

// The drawing in session: -18 for a model that is none, otherwise as for all models.
inline ProError ResolveDrawing(ProDrawing handle, Model*& drawing) {
  if (const ProError status = Resolve(handle, drawing)) return status;
  return drawing->drawing ? PRO_TK_NO_ERROR : PRO_TK_INVALID_TYPE;
}

// A view of that drawing: -19 for any other handle.
inline ProError ResolveView(ProDrawing handle, ProView view_handle, Model*& drawing, DrawingView*& view) {
  if (!view_handle) return PRO_TK_BAD_INPUTS;
  if (const ProError status = ResolveDrawing(handle, drawing)) return status;
  view = drawing->drawing->ViewOf(view_handle);
  return view ? PRO_TK_NO_ERROR : PRO_TK_INVALID_PTR;
}

inline ProDrawing DrawingHandle(Model& drawing) {
  return reinterpret_cast<ProDrawing>(&drawing);
}

inline ProView ViewHandle(const DrawingView& view) {
  return static_cast<ProView>(view.handle);
}

}  // namespace bench

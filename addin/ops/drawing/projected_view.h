// Views that look at their parent's model from a side.
#pragma once

#include "addin/ops/drawing/views.h"
#include "addin/server/provider.h"

namespace vek::drawing {

// Asks the host for a view that is projected from `parent` and stands at that point. Null on failure.
ProError CreateProjectedView(ProDrawing drawing, ProView parent, const SheetPoint& at, ProView& view);

// api_drawing_add_projected_view.
void RegisterProjectedViewOperation(CreoMcpProvider& provider);

}  // namespace vek::drawing

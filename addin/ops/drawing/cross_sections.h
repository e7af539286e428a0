// Cross-sections: where a line across a view cuts the view's model.
#pragma once

#include <ProDrawingView.h>

#include <string>

#include "addin/ops/drawing/cutting_plane.h"
#include "addin/server/operation_result.h"

namespace vek::drawing {

// Makes a new cross-section of `solid` where `line` cuts the view `parent`, on an offset plane of its own
// when the cut lies off the datum plane, and gives its name. What was made before a failure stays in the
// model. When the offset plane can't be had, the cut goes along the datum plane.
CreoMcpOperationResult CreateSectionCrossSection(ProDrawing drawing, ProView parent, ProSolid solid,
                                                 const CuttingLine& line, std::wstring& name);

}  // namespace vek::drawing

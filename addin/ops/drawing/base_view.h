// The first view of a drawing.
#pragma once

#include "addin/server/provider.h"

namespace vek::drawing {

// api_drawing_add_base_view.
void RegisterBaseViewOperation(CreoMcpProvider& provider);

}  // namespace vek::drawing

// The operations of the drawing family.
#pragma once

#include "addin/server/provider.h"

namespace vek::drawing {

// api_drawing_*.
void RegisterDrawingOperations(CreoMcpProvider& provider);

}  // namespace vek::drawing

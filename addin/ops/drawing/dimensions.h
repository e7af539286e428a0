// Dimensions on views.
#pragma once

#include "addin/server/provider.h"

namespace vek::drawing {

// api_drawing_add_dimensions.
void RegisterDimensionOperation(CreoMcpProvider& provider);

}  // namespace vek::drawing

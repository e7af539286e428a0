// Views that enlarge a part of another.
#pragma once

#include "addin/server/provider.h"

namespace vek::drawing {

// api_drawing_add_detail_view.
void RegisterDetailViewOperation(CreoMcpProvider& provider);

}  // namespace vek::drawing

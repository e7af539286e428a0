// What stands on the active sheet.
#pragma once

#include "addin/server/provider.h"

namespace vek::drawing {

// api_drawing_list_views.
void RegisterViewListingOperation(CreoMcpProvider& provider);

}  // namespace vek::drawing

// Drawing documents.
#pragma once

#include "addin/server/provider.h"

namespace vek::drawing {

// api_drawing_create.
void RegisterDocumentOperations(CreoMcpProvider& provider);

}  // namespace vek::drawing

// Views of a model that is cut.
#pragma once

#include "addin/server/provider.h"

namespace vek::drawing {

// api_drawing_add_section_view.
void RegisterSectionViewOperation(CreoMcpProvider& provider);

}  // namespace vek::drawing

// The mirror of what features own. The host offers no mirror of features themselves: the geometry is
// mirrored, and an attempt is made at a solid of it.
#pragma once

#include "addin/server/provider.h"

namespace vek::feature {

// Enters api_pattern_mirror.
void RegisterGeometryMirrorOperation(CreoMcpProvider& provider);

}  // namespace vek::feature

// Features without a section: shells, straight holes at the points of a sketch, and rotations of the whole
// solid.
#pragma once

#include "addin/server/provider.h"

namespace vek::feature {

// Enters api_feature_shell and api_feature_hole.
void RegisterShellHoleOperations(CreoMcpProvider& provider);

// Enters api_feature_transform_rotate.
void RegisterRotateOperations(CreoMcpProvider& provider);

}  // namespace vek::feature

// Sweeps: a cross-section from one committed sketch along a trajectory from another.
//
// The host takes no finished sweep in one call: its section is drawn on the crosshairs of the trajectory, and
// these exist only once a feature stands in the model. So an incomplete feature is made, its section is
// filled in, and redefinitions with one setting after another are tried until the host calls it complete. If
// none does, the feature is deleted again.
#pragma once

#include "addin/host/element_tree_builder.h"
#include "addin/server/provider.h"

namespace vek::feature {

// The tree of the incomplete feature, which takes the collection over. The section stays empty.
ElementTreeBuilder SweepTree(OwnedCollection& trajectory, bool is_cut);

// Enters api_feature_sweep and api_feature_loft, which the host has no way for.
void RegisterSweepOperations(CreoMcpProvider& provider);

}  // namespace vek::feature

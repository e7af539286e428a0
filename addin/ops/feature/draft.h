// Drafts on the side faces of a feature.
#pragma once

#include "addin/server/provider.h"

namespace vek::feature {

// Enters api_edge_draft.
void RegisterDraftOperations(CreoMcpProvider& provider);

}  // namespace vek::feature

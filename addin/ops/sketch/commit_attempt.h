// One attempt to build a sketch's feature from its session.
#pragma once

#include <optional>

#include "addin/ops/sketch/session.h"

namespace vek::sketch {

// Builds the feature with the plane references that the session holds, from the empty incomplete feature up
// to the complete and named one. Nothing is returned for a failure that references of the other form may
// mend; any other outcome is final. On failure no feature is left behind, and the session has none.
std::optional<CreoMcpOperationResult> AttemptCommit(SketchSession& session);

}  // namespace vek::sketch

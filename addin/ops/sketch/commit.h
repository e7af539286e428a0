// Committing a sketch session into a feature of its model.
#pragma once

#include "addin/ops/sketch/session.h"

namespace vek::sketch {

// Deletes the feature of the session's last commit, if there is one. The session has none afterwards, also
// when the host refuses to delete it, which gives false.
bool DiscardSketchFeature(SketchSession& session);

// Deletes the session's feature and builds it anew from the session, under the session's name. A session
// without entities has no feature. A failure leaves the session as it was but for its feature, which is gone.
CreoMcpOperationResult CommitSketch(SketchSession& session);

}  // namespace vek::sketch

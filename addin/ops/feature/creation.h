// Handing an element tree to the host. The tree stays the caller's, whatever comes of it.
#pragma once

#include <ProElement.h>
#include <ProFeature.h>

#include <string>

#include "addin/ops/feature/frame.h"
#include "addin/server/operation_result.h"

namespace vek::feature {

// Creates a feature of `model` from `tree`, with one of the host's creation options (0 lets one stay that
// failed, 1 resolves nothing, 2 makes an incomplete feature, 6 undoes one that failed). `name` is the kind of
// feature, for message and log. `regenerate` has the part regenerated and shown.
CreoMcpOperationResult CreateFeatureFromTree(ProMdl model, ProElement tree, int option,
                                             const std::wstring& name, ProFeature& feature, bool regenerate);

// The same for a tree whose section is left empty: the host fills it from the committed sketch.
CreoMcpOperationResult CreateSketchedFeature(ProMdl model, ProElement tree, const FeatureInfo& sketch,
                                             ProFeature& feature);

}  // namespace vek::feature

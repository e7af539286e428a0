// Patterns of features along directions and about an axis.
#pragma once

#include <ProFeature.h>

#include <string>
#include <vector>

#include "addin/server/operation_result.h"
#include "addin/server/provider.h"

namespace vek::feature {

// The features of the argument `feature_names`, in its order; empty names are passed over.
CreoMcpOperationResult ResolvePatternFeatures(ProMdl model, const std::vector<std::wstring>& names,
                                              std::vector<ProFeature>& features);

// The result of a pattern or mirror that stands: logs the message and enters the feature into the history.
CreoMcpOperationResult PatternSucceeded(const std::wstring& name, const std::wstring& message);

// Enters api_pattern_rectangular and api_pattern_circular.
void RegisterPatternOperations(CreoMcpProvider& provider);

}  // namespace vek::feature

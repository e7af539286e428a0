// Listing, deleting, suppressing and resuming the features of the active part.
#pragma once

#include <string>

#include "addin/ops/feature/frame.h"
#include "addin/server/operation_result.h"
#include "addin/server/provider.h"

namespace vek::feature {

// The state change itself, of a feature that was found and is not yet in that state. `name` is what the
// client calls it. Neither pushes onto the history.
CreoMcpOperationResult SuppressFeature(ProMdl model, const FeatureInfo& info, const std::wstring& name);
CreoMcpOperationResult ResumeFeature(ProMdl model, const FeatureInfo& info, const std::wstring& name);

// Enters api_feature_delete, api_feature_list, api_feature_suppress and api_feature_unsuppress.
void RegisterLifecycleOperations(CreoMcpProvider& provider);

}  // namespace vek::feature

// Cosmetic threads on cylindrical surfaces.
#pragma once

#include <ProMdl.h>

#include <string>

#include "addin/ops/feature/frame.h"
#include "addin/server/operation_result.h"
#include "addin/server/provider.h"

namespace vek::feature {

// Puts a thread of the ISO series on the first cylindrical surface of `target`, over all of its depth or over
// `length_mm`, and enters it into the history. The result is that of api_feature_thread.
CreoMcpOperationResult AddCosmeticThread(ProMdl model, const FeatureInfo& target,
                                         const std::wstring& designation, bool full_depth, double length_mm);

// Enters api_feature_thread.
void RegisterThreadOperations(CreoMcpProvider& provider);

}  // namespace vek::feature

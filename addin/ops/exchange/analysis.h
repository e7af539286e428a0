// Questions about the active model: weight, box, distances, interference, draft. Nothing is changed. Answers
// are in mm, cm², cm³, kg and degrees, whatever the model's units.
#pragma once

#include "addin/server/provider.h"

namespace vek::exchange {

// The five api_analysis_… operations.
void RegisterAnalysisOperations(CreoMcpProvider& provider);

}  // namespace vek::exchange

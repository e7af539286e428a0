// The parameter operations: reading and setting the values of the active part or assembly by name.
//
// Clients see one space of names: the model's parameters, and behind them the dimensions of its solid under
// their symbols. A parameter hides a dimension of the same name.
#pragma once

#include "addin/server/provider.h"

namespace vek::parameters {

void RegisterParameterOperations(CreoMcpProvider& provider);

// api_parameters_set, as the history replays it.
CreoMcpOperationResult ParametersSet(const std::wstring& arguments);

}  // namespace vek::parameters

// Turning occurrences off and on.
#pragma once

#include <string>

#include "addin/server/provider.h"

namespace vek::assembly {

// The operations themselves, from the arguments text; the history calls them as well. An occurrence that is
// in the wanted state already is a success that touches nothing.
CreoMcpOperationResult SuppressOccurrence(const std::wstring& arguments);
CreoMcpOperationResult UnsuppressOccurrence(const std::wstring& arguments);

void RegisterSuppressionOperations(CreoMcpProvider& provider);

}  // namespace vek::assembly

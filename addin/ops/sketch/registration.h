// The sketch family's operations.
#pragma once

#include <map>
#include <string>

#include "addin/server/provider.h"

namespace vek::sketch {

// The sketch operations by name, for running a step of the history again. Filled by the registration.
const std::map<std::wstring, CreoMcpProvider::Operation>& SketchOperationTable();

// Runs a sketch operation again, as the history does.
CreoMcpOperationResult ReplaySketchOperation(const std::wstring& name, const std::wstring& arguments);

// Enters the family's operations in the provider and in the table above.
void RegisterSketchOperations(CreoMcpProvider& provider);

}  // namespace vek::sketch

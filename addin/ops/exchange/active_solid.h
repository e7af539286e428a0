// The family's check of the active model.
#pragma once

#include <ProMdl.h>

#include "addin/server/operation_result.h"

namespace vek::exchange {

// The active model and its type, when it is a part or an assembly; `wrong_type` is what the others are told.
CreoMcpOperationResult RequireActiveSolid(const wchar_t* wrong_type, ProMdl& model, int& type);

}  // namespace vek::exchange

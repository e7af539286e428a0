// What the session's history shows of itself.
#pragma once

#include <string>

#include "addin/server/operation_result.h"

namespace vek::document {

// api_document_get_history: the labels of one stack or of both, the newest first.
CreoMcpOperationResult GetHistory(const std::wstring& arguments);

}  // namespace vek::document

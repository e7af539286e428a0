// Walking the session's history: each step asks the family that made an entry to reverse it, or to do it
// again.
//
// The families' own checks decide whether a step can be applied. One that can't stays on its stack and ends
// the walk; what was applied before it stays applied.
#pragma once

#include "addin/server/provider.h"

namespace vek::document {

// api_document_undo, api_document_redo.
void RegisterUndoRedoOperations(CreoMcpProvider& provider);

}  // namespace vek::document

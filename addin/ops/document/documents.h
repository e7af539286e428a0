// The documents of the session: which one is active, which are open, and how one is opened, made, saved,
// closed.
//
// Every operation that moves the active document to another one empties the session's history, which belongs
// to one document; rebuild and save-as don't.
#pragma once

#include "addin/server/provider.h"

namespace vek::document {

// api_document_*, all but undo and redo.
void RegisterDocumentOperations(CreoMcpProvider& provider);

}  // namespace vek::document

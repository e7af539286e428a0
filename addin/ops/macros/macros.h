// The macro operations: a small library of mapkey macros in one folder of the user's profile, and its runs.
//
// A macro is a text file there; nothing else is touched, and no name leads out of the folder. The folder is
// looked at anew by each operation. What a macro does to a model is outside the session's history.
#pragma once

#include "addin/server/provider.h"

namespace vek::macros {

void RegisterMacroOperations(CreoMcpProvider& provider);

}  // namespace vek::macros

// Showing what became of an assembly. The statuses of these calls are ignored.
#pragma once

#include <ProMdl.h>

namespace vek::assembly {

// Model tree, graphics and the current window.
void ShowAssembly(ProMdl assembly);

// The same behind a regeneration: after every change of an assembly. For a null handle only the window.
void RefreshAssemblyDisplay(ProMdl assembly);

}  // namespace vek::assembly

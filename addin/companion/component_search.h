// Where in an assembly a component of a given name is placed.
//
// The assembly is visited twice: its own features, and all that is displayed at every depth. What both find
// counts once, and so does a component of a sub-assembly that is placed several times. Names compare without
// regard to case and up to their first dot. Main thread.
#pragma once

#include <ProAsmcomp.h>

#include <string_view>
#include <vector>

namespace vek {

constexpr int kAnyModelType = -1;

// The components whose model is called `name` and is of the wanted type: 1 assemblies, 2 parts. -2 without an
// assembly or a name, -4 when there is none, the first visit's status when both visits failed.
int FindAllComponentsInAssembly(ProMdl assembly, std::wstring_view name, std::vector<ProAsmcomp>& components,
                                int modelTypeFilter = kAnyModelType);

// The same with the assemblies that own them, in the same order. A component whose owner can't be told is
// left out of both.
int FindAllComponentsInAssemblyWithParents(ProMdl assembly, std::wstring_view name,
                                           std::vector<ProAsmcomp>& components, std::vector<ProMdl>& parents,
                                           int modelTypeFilter = kAnyModelType);

// Where the component is in its assembly. The host's status.
int GetComponentTransform(ProAsmcomp& component, ProMatrix matrix);

}  // namespace vek

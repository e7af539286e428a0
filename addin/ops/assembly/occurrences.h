// The components of the active assembly: what it holds, and how a client's text comes to mean one of them.
//
// No table is kept: every operation walks the assembly anew, first level only. A name survives between two
// operations because it is the component feature's name, or comes of the feature's id. Main thread only.
#pragma once

#include <ProAsmcomp.h>

#include <string>
#include <vector>

#include "addin/server/operation_result.h"
#include "addin/server/provider.h"

namespace vek::assembly {

// One component feature. Good within the operation that filled it.
struct OccurrenceInfo {
  std::wstring name;
  int id = -1;
  ProAsmcomp comp{};
  ProMdl model = nullptr;  // null when the host can't give it
  int model_type = -1;
  std::wstring full_path;  // of the model; empty without one
  bool suppressed = false;
};

// The active model, which must be an assembly. Every assembly operation starts with this.
CreoMcpOperationResult RequireActiveAssembly(ProMdl& assembly);

// The occurrences in the host's order.
CreoMcpOperationResult CollectOccurrences(ProMdl assembly, std::vector<OccurrenceInfo>& list);

// The feature's name, or "COMP_<id>" for one without a name.
std::wstring OccurrenceDisplayName(const ProAsmcomp& comp);

// The occurrence that bears the name `query`, else the only one that places the model of that name.
CreoMcpOperationResult ResolveOccurrence(ProMdl assembly, const std::wstring& query, OccurrenceInfo& info);

// The same for the argument `occurrence_name`.
CreoMcpOperationResult ResolveNamedOccurrence(ProMdl assembly, const std::wstring& arguments,
                                              OccurrenceInfo& info);

// Gives the occurrence the name `desired`, with a number behind it when that is taken, and tells the name
// that it bears afterwards. A name beyond the host's 31 characters is told in full. Never fails.
std::wstring AssignOccurrenceName(ProMdl assembly, const ProAsmcomp& comp, std::wstring_view desired);

// api_assembly_list_components.
void RegisterOccurrenceOperations(CreoMcpProvider& provider);

}  // namespace vek::assembly

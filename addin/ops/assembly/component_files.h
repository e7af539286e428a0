// The files behind components: where a component's model comes from, and where it has to lie.
#pragma once

#include <ProMdl.h>

#include <string>

#include "addin/server/operation_result.h"

namespace vek::assembly {

// The model in session that `file_path` means, else the part or assembly in that file. The assembly is the
// active model afterwards, and the working directory is what it was.
CreoMcpOperationResult LoadComponentModel(ProMdl assembly, const std::wstring& file_path, ProMdl& model);

// Where a component's model came to lie.
struct ComponentPlace {
  bool copied = false;
  std::wstring local_path;
};

// Copies the model beside the assembly's file unless it lies there already.
CreoMcpOperationResult PlaceBesideAssembly(ProMdl assembly, ProMdl model, ComponentPlace& place);

}  // namespace vek::assembly

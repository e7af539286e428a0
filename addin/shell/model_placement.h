// Showing a model that has come into session: as a component of the current assembly, or in a window. Main
// thread.
#pragma once

#include <ProMdl.h>

#include <string>

#include "addin/server/part_opening.h"

namespace vek {

// Puts the model into the current assembly where `location` says, in the assembly's own units; over a current
// part it gets a window, or, when `sourcePath` names its file, a second session of the host; without either a
// window. `modelType` is 1 for an assembly. 0, or the status of what failed.
int PlaceOrDisplayModel(ProMdl model, const std::wstring& modelName, int modelType,
                        const LocationInfo& location, const std::wstring& sourcePath);

}  // namespace vek

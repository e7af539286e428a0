// The companion's answers: a new part or assembly in every place of a component of the current assembly.
//
// All positions are taken before anything changes; then the old components go, if they are to, and the new
// ones come, and only then each assembly that was touched is regenerated, once. What fails is logged and
// nothing is rolled back. Main thread.
#pragma once

#include "addin/server/part_opening.h"

namespace vek {

void HandlePartReplacement(const FileDownloadInfo& info);
void HandleAssemblyInspection(const FileDownloadInfo& info);

}  // namespace vek

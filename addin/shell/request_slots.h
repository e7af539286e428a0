// Where part-opening requests wait for the main thread: one slot for each kind, in which the last one wins.
#pragma once

#include "addin/server/part_opening.h"

namespace vek {

// Sorts a request into its slot. Server thread. A request that fits none goes to the log alone.
void OnFileProcessingRequest(const FileDownloadInfo& info);

// Serves the first slot that waits: open, part replacement, assembly inspection, workspace. Main thread.
void ServeOneRequest();

}  // namespace vek

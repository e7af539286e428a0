// Opening model files and objects of the workspace in the host. Main thread.
#pragma once

#include "addin/server/part_opening.h"

namespace vek {

// Opens the file of a request; STEP and Parasolid files are confirmed by the user and imported. 0 when it is
// shown, and when the user has changed his mind. What fails goes to the log alone.
int OpenFileInCreo(const FileDownloadInfo& info);

// Opens an object of the workspace by its file name. What fails is told to the user as well: nothing else
// would tell him that his request came to nothing.
int OpenWindchillModelInCreo(const FileDownloadInfo& info);

}  // namespace vek

// "--check-update": looks whether the administrator offers a newer version, and stages it.
#pragma once

#include "deploy/helper/installation.h"
#include "deploy/helper/outcome.h"
#include "deploy/helper/version.h"

namespace vek::helper {

// The first line of update-source.txt, in UTF-8, names a folder with a manifest.txt, or a manifest whose
// files lie beside it; from the helper's folder on unless it is a whole path. A place that nobody named or
// that is not there is no failure, and leaves what is staged.
Outcome CheckForUpdate(const Installation& installation, const Version& installed);

}  // namespace vek::helper

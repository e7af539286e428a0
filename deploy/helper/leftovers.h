// The files that installations have put aside.
//
// A file in use can be renamed, and can't be deleted before nobody uses it any more; so what an installation
// puts aside is removed by a later run.
#pragma once

#include <string>

#include "deploy/helper/installation.h"

namespace vek::helper {

// A path for putting the file `name` aside, at which nothing stands.
std::wstring FreeAsidePath(const Installation& installation, const std::wstring& name);

// Removes what was put aside and is no longer in use. A file put aside whose name nothing bears any more is
// what a run left that ended in the middle: the newest gets its name back.
void TidyLeftovers(const Installation& installation);

}  // namespace vek::helper

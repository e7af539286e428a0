// The component paths of callers.
#pragma once

#include <ProAsmcomp.h>

#include <vector>

#include "bench/host/model/component.h"

namespace bench {

// The ids of a path; a count beyond the table's size is taken as none.
std::vector<int> IdsOf(const ProAsmcomppath& path);

// Where a caller's path ends. Its owner must be a solid in session, and every step of it a component.
ProError EndOf(const ProAsmcomppath& path, PathEnd& end);

}  // namespace bench

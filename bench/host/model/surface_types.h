// Kinds of surface: the kernel's words and the toolkit's numbers.
#pragma once

#include <string_view>

namespace bench {

// 34 plane, 36 cylinder, 37 cone, 38 torus, 43 revolved (a sphere among them), 44 extruded, 45 spline; 46,
// foreign, for every other word.
int SurfaceTypeNumber(std::string_view word);

}  // namespace bench

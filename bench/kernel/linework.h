// Polylines as a draughtsman draws them: each stroke once.
#pragma once

#include "bench/kernel/hidden_lines.h"

namespace bench::kernel {

// Joins straight pieces in line and curves that go on in each other, takes away what lies on another line
// (hidden ones give way to visible ones) and what is too short to be seen. Lines as near to each other as
// twice the tolerance, within which the polylines follow their curves, are one.
void Tidy(SeenLines& lines, double tolerance);

}  // namespace bench::kernel

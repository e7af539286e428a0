// What a dimension of a section measures before it is told a value.
#pragma once

#include "bench/kernel/sketch_solver.h"

namespace bench::kernel {

// Of the entities as they are, in mm or radians. Throws Refusal for a constraint, which measures nothing, and
// for targets that it can't be taken of.
double MeasureCondition(const std::vector<Entity>& entities, const SolverCondition& condition);

}  // namespace bench::kernel

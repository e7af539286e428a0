// What a solid feature does with the body of the features before it.
#pragma once

#include "bench/kernel/named_shape.h"
#include "bench/kernel/recipe.h"

namespace bench::kernel {

// Adds the tool to the body; without a body the tool is the body. Solids that don't meet stay apart.
NamedShape Join(const NamedShape& body, const NamedShape& tool);

// Takes the tool off the body. Throws Refusal without a body, and when the cut removes nothing or everything.
NamedShape Cut(const NamedShape& body, const NamedShape& tool);

NamedShape Apply(Operation operation, const NamedShape& body, const NamedShape& tool);

}  // namespace bench::kernel

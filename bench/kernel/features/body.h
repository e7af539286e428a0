// What a solid feature does with the body of the features before it.
#pragma once

#include "bench/kernel/named_shape.h"
#include "bench/kernel/sketch_recipe.h"

namespace bench::kernel {

// Adds the tool to the body; without a body the tool is the body. Solids that don't meet stay apart.
NamedShape Join(const NamedShape& body, const NamedShape& tool);

// Takes the tool off the body. Throws Refusal without a body, and when the cut removes nothing or everything.
NamedShape Cut(const NamedShape& body, const NamedShape& tool);

NamedShape Apply(Operation operation, const NamedShape& body, const NamedShape& tool);

// Whether the feature at that place, whose faces are named after it, has added anything to the body or taken
// anything off it.
bool HasChanged(const NamedShape& before, const NamedShape& after, const FeaturePlace& place);

}  // namespace bench::kernel

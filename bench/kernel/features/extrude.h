// The extrude feature: a section swept straight, joined to the body or cut from it.
#pragma once

#include "bench/kernel/named_shape.h"
#include "bench/kernel/recipe.h"

namespace bench::kernel {

// The body after the feature. Throws Refusal.
NamedShape Extrude(const ExtrudeRecipe& recipe, const FeaturePlace& place, const NamedShape& body);

}  // namespace bench::kernel

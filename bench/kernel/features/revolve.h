// The revolve feature: a section turned about the first centerline of its sketch.
#pragma once

#include "bench/kernel/named_shape.h"
#include "bench/kernel/recipe.h"

namespace bench::kernel {

// The body after the feature. Throws Refusal.
NamedShape Revolve(const RevolveRecipe& recipe, const FeaturePlace& place, const NamedShape& body);

}  // namespace bench::kernel

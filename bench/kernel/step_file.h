// STEP files of products.
#pragma once

#include <string>

#include "bench/kernel/scene.h"

namespace bench::kernel {

// Throws Refusal when the writer gives up.
std::string StepBytes(const Scene& scene);

}  // namespace bench::kernel

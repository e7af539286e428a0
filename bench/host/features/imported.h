// Shapes that came out of a file, each as one feature.
#pragma once

#include <string>
#include <vector>

#include "bench/host/features/features.h"

namespace bench {

// Makes an import feature of each shape, in the kernel's words, at the end of a part. All of them come, or
// none: the outcome tells the last one's id.
FeatureOutcome AddImports(Model& part, const std::vector<std::string>& shapes);

}  // namespace bench

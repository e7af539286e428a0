// How much room a model takes: a part as the kernel told it, an assembly as its components do where they lie.
#pragma once

#include <optional>

#include "bench/host/model/model.h"

namespace bench {

struct Extent {
  std::optional<double> volume;  // mm³; of bodies that clash, what they share counts twice
  std::optional<Box> outline;    // mm; of an assembly around the boxes of its parts as they are turned
};

// Suppressed components and those without a model count for nothing.
Extent ExtentOf(const Model& model);

}  // namespace bench

// How much room a model takes and what it weighs: a part as the kernel told it, an assembly as its components
// do where they lie.
#pragma once

#include <optional>

#include "bench/host/model/model.h"

namespace bench {

struct Weight {
  double volume = 0;  // mm³; of bodies that clash, what they share counts twice
  double area = 0;    // mm²
  double mass = 0;    // kg
  Vector3 center{};   // of gravity; mm
};

struct Extent {
  std::optional<Weight> weight;  // nothing for a model without a body
  std::optional<Box> outline;    // mm; of an assembly around the boxes of its parts as they are turned
};

// Suppressed components and those without a model count for nothing.
Extent ExtentOf(const Model& model);

}  // namespace bench

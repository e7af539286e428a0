// Bodies of a scene that take up the same room.
#pragma once

#include <nlohmann/json.hpp>
#include <vector>

#include "bench/kernel/scene.h"

namespace bench::kernel {

struct Clash {
  std::vector<int> first, second;  // paths, the first the lesser
  double volume = 0;               // mm³
};

// Every pair of placed bodies with room in common, in the order of their paths. What is no more than 1e-5 mm
// thick is contact. Throws Refusal when the toolkit can't tell.
std::vector<Clash> ClashesOf(const Scene& scene);

// The answer to "interfere".
nlohmann::json DescribeClashes(const Scene& scene);

}  // namespace bench::kernel

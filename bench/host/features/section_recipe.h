// Sections and planes in the kernel's words.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "bench/host/model/feature.h"

namespace bench {

// `mm` is the length of the model's unit in millimetres.
nlohmann::json PlaneRecipe(const PlaneFrame& plane, double mm);
nlohmann::json EntitiesRecipe(const SectionData& section, double mm);

}  // namespace bench

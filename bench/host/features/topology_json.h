// Reads the kernel's answer to a regeneration.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "bench/host/features/regeneration.h"

namespace bench {

// Fills everything but the recipes. False, after a complaint, when the answer is not what the protocol says.
bool ReadGeometry(const nlohmann::json& answer, Geometry& geometry);

}  // namespace bench

// The request "solve": a section's entities with its constraints and dimensions in, the entities as they then
// lie out.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "bench/kernel/json_fields.h"

namespace bench::kernel {

// Throws BadRequest, and Refusal for what can't be solved.
nlohmann::json AnswerSolve(const Fields& request);

}  // namespace bench::kernel

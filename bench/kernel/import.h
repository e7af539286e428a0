// STEP files of others as models.
#pragma once

#include <nlohmann/json.hpp>

#include "bench/kernel/json_fields.h"

namespace bench::kernel {

// The answer to "import". Throws BadRequest, and Refusal for a file that is broken or holds no geometry.
nlohmann::json AnswerImport(const Fields& request);

}  // namespace bench::kernel

// What a drawing's view shows of a model: lines seen and hidden, cut faces and the room that they take.
#pragma once

#include <nlohmann/json.hpp>

#include "bench/kernel/json_fields.h"
#include "bench/kernel/scene.h"

namespace bench::kernel {

// What the request "project" answers under "ok". Throws BadRequest and Refusal.
nlohmann::json AnswerProject(const Fields& request, const Scene& scene);

}  // namespace bench::kernel

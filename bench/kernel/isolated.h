// Work on data of others, which may bring the toolkit down or leave it in disorder.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>

namespace bench::kernel {

// What the work answers; it is done in a process of its own, which leaves nothing behind. A Refusal goes
// through. Throws a Refusal with `otherwise` when the work fails in another way, crashes, or computes for
// more than two minutes.
nlohmann::json InIsolation(const std::function<nlohmann::json()>& work, const std::string& otherwise);

}  // namespace bench::kernel

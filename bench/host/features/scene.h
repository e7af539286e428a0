// A model with all that it places, as requests to the kernel carry it.
#pragma once

#include <string>

#include "bench/host/model/model.h"

namespace bench {

// The members "models" and "root" as they stand in a JSON object, without a comma at either end. Of each
// part what its geometry came of: what was changed since isn't in it. Suppressed and missing components are
// left out. Lengths are millimetres, whatever the units of the models.
std::string SceneFields(const Model& model);

}  // namespace bench

// The HTTP interface as an OpenAPI 3.1 document, made from the catalogue.
#pragma once

#include <string>

#include "bridge/json.h"

namespace vek::reference {

// `version` is the product's.
bridge::Json WriteOpenApi(const bridge::Json& catalogue, const std::string& version);

}  // namespace vek::reference

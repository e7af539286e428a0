// catalogue/operations.json, which the build turns into a source.
#pragma once

#include <string_view>

namespace vek::bridge {

std::string_view CatalogueText();

}  // namespace vek::bridge

// Shapes that were made elsewhere.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadImported(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

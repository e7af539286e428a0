// The move feature: the whole body at another place.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadMove(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

// The chamfer feature: edges replaced by bevels.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadChamfer(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

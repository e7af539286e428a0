// The sweep feature: a section moved along a trajectory that lies in a plane.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadSweep(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

// The hole feature: a flat-bottomed cylinder, drilled from a point of a sketch.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadHole(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

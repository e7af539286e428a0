// The pattern feature: features that stand before it, made again at other places.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadPattern(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

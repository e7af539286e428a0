// The extrude feature: a section swept straight, joined to the body or cut from it.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadExtrude(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

// The revolve feature: a section turned about the first centerline of its sketch.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadRevolve(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

// The round feature: edges replaced by a ball that rolls along them.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadRound(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

// The draft feature: faces tilted about their hinges.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadDraft(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

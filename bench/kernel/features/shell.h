// The shell feature: the body hollowed to walls of one thickness.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadShell(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

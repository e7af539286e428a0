// The geometry mirror: faces of the body and quilts give quilts on the plane's other side; curves and points
// give curves and points.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadMirror(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

// The solidify feature: the room that a quilt bounds, by itself or together with the body, joins the body.
// The quilt is used up.
#pragma once

#include "bench/kernel/feature.h"

namespace bench::kernel {

std::unique_ptr<const Feature> ReadSolidify(const Fields& fields, const std::string& where);

}  // namespace bench::kernel

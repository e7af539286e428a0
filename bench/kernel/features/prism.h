// Sections swept straight, with upright or with drafted walls.
#pragma once

#include "bench/kernel/named_shape.h"
#include "bench/kernel/section.h"

namespace bench::kernel {

// The section swept from `from` to `to`, both in mm along `direction` from the section's plane, `from` below
// `to`. The face at `from` is the start, the one at `to` the end.
NamedShape UprightPrism(const Section& section, const gp_Dir& direction, double from, double to,
                        const FeaturePlace& place);

// The section swept by `depth` in mm along `direction`, its walls leaning by `taper` in radians: a positive
// taper takes material away with the distance from the section's plane, so that a hole of the section widens.
// Throws Refusal for a wall that can't be drafted and for a section that collapses before its depth.
NamedShape DraftedPrism(const Section& section, const gp_Dir& direction, double depth, double taper,
                        const FeaturePlace& place);

}  // namespace bench::kernel

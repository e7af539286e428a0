// How steps become batches. The add-in keys a batch's results by name and runs nothing of it behind a close,
// so a name that comes again and a step behind a close begin a new one; so does one with which a request
// would grow too large.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "bridge/creo.h"

namespace vek::bridge {

// The body of the request that runs the steps.
std::string ExecuteBody(std::span<const Step> steps);

// Whether a step alone is larger than what the add-in reads.
bool IsTooLarge(const Step& step);

// How many of the steps at the front go into the next batch: as many as may, and one at least.
std::size_t NextBatch(std::span<const Step> steps);

}  // namespace vek::bridge

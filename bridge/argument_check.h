// What the add-in would ignore quietly is refused before anything is posted: names that an operation does not
// take, values of another type, and words for which it would take its default. Whether something is missing
// or out of its limits is for the add-in to say, in its own words.
#pragma once

#include <string>
#include <vector>

#include "bridge/catalogue.h"
#include "bridge/json.h"

namespace vek::bridge {

// One sentence for each mistake in the arguments, which are an object; empty when there is none.
std::vector<std::string> ArgumentMistakes(const Operation& operation, const Json& arguments);

}  // namespace vek::bridge

// JSON Schemas of what an operation takes and gives, made from the catalogue.
#pragma once

#include "bridge/catalogue.h"
#include "bridge/json.h"

namespace vek::bridge {

// Of the arguments object, with no other members than those in the catalogue.
Json ArgumentsSchema(const Operation& operation);

// Of the data of a result that succeeded: an object, or an array of objects.
Json DataSchema(const Operation& operation);

}  // namespace vek::bridge

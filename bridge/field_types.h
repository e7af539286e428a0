// The types that the catalogue knows: what JSON stands for each, and how a message calls it.
#pragma once

#include <string_view>

#include "bridge/json.h"

namespace vek::bridge {

struct FieldType {
  const char* word;    // as the catalogue has it
  const char* phrase;  // as a message has it: "a number"
  const char* schema;  // the JSON Schema of the type alone
  bool (*fits)(const Json& value);
};

// Throws for a word that is none.
const FieldType& FindFieldType(std::string_view word);

}  // namespace vek::bridge

// Sections in model files.
#pragma once

#include <memory>
#include <nlohmann/json.hpp>

#include "bench/host/model/section_data.h"

namespace bench {

using Json = nlohmann::ordered_json;

// A number that JSON can't hold (infinite, not a number) is written as a word.
Json NumberToJson(double number);
double NumberFromJson(const Json& json);

Json SectionToJson(const SectionData& section);
// Throws when the section makes no sense.
std::shared_ptr<SectionData> SectionFromJson(const Json& json);

}  // namespace bench

// JSON as the bridge reads and writes it. Members keep their order, because the order of a batch is its
// meaning.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace vek::bridge {

using Json = nlohmann::ordered_json;

// The value that the text is; nothing when it is no JSON, no UTF-8, or nested deeper than anything that is
// meant.
std::optional<Json> ReadJson(std::string_view text);

// The value in one line, as UTF-8. What is no UTF-8 in its texts is replaced.
std::string WriteJson(const Json& value);

// The member of an object; null when there is none, or when the value is no object.
const Json* FindMember(const Json& object, std::string_view name);

}  // namespace vek::bridge

// Writing JSON by formatting templates: escaping, and the three bodies that the server answers with.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "addin/server/operation_result.h"

namespace vek {

// `text` ready to stand between double quotes. Every text put there, anywhere in the system, goes through
// this.
std::wstring JsonEscape(std::wstring_view text);

// {"results":{…}} with one entry an operation, in the map's order.
std::wstring EncodeBatchResults(const BatchResults& results);

// {"error":"…"}
std::wstring EncodeError(std::wstring_view text);

// The health body: the names in the order given, and the port.
std::wstring EncodeHealth(const std::vector<std::wstring>& names, int port);

}  // namespace vek

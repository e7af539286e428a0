// Texts as messages and protocols need them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vek::bridge {

// Without regard to the case of the letters A to Z.
bool EqualsIgnoringCase(std::string_view a, std::string_view b);

// "a, b, c"
std::string Listed(const std::vector<std::string>& words);

}  // namespace vek::bridge

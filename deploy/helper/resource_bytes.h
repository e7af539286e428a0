// The data that the program carries inside it.
#pragma once

#include <string_view>

namespace vek::helper {

// The bytes of the raw resource of that number; empty when there is none. They last as long as the program.
std::string_view ResourceBytes(int id);

}  // namespace vek::helper

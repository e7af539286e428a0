#pragma once

#include <string>
#include <string_view>

namespace bench::kernel {

// The bytes in base64, padded, without line breaks.
std::string Base64(std::string_view bytes);

}  // namespace bench::kernel

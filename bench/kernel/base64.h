#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bench::kernel {

// The bytes in base64, padded, without line breaks.
std::string Base64(std::string_view bytes);

// What the text stands for; nothing for one with other characters, blanks among them. The "=" at its end may
// be left out.
std::optional<std::string> FromBase64(std::string_view text);

}  // namespace bench::kernel

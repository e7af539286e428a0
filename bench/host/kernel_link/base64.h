// Bytes on the wire to the kernel.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bench {

// The bytes behind a base64 text with its padding; nothing when it is none.
std::optional<std::string> DecodeBase64(std::string_view text);

// With its padding, without line breaks.
std::string EncodeBase64(std::string_view bytes);

}  // namespace bench

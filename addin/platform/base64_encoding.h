// Writing base64, with the system's own encoder.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vek {

// `bytes` in base64, without line breaks; nothing when the system can't.
std::optional<std::string> EncodeBase64(std::string_view bytes);

}  // namespace vek

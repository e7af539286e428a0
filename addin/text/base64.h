// Reading base64.
#pragma once

#include <cstddef>
#include <string_view>

namespace vek {

// Decodes `text` into `buffer`, which has room for `size` bytes, and sets `size` to the number of bytes that
// the text holds. Characters outside the alphabet, "=" and line breaks among them, are passed over; a NUL
// where a group of four begins ends the text. A short last group gives the whole bytes that it has. False
// when the buffer is too small for all; what doesn't fit is only counted then.
bool DecodeBase64(std::string_view text, unsigned char* buffer, std::size_t& size);

}  // namespace vek

// UTF-8 and UTF-16: the border between the bytes of the wire and the text of the system.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vek {

// Decodes UTF-8 into UTF-16 code units, one per element, also where `wchar_t` is wider: a character beyond
// the basic plane is always a surrogate pair. Malformed input (a stray or missing continuation, an overlong
// form, an encoded surrogate, a value above 10FFFF) yields nothing at all: the empty text.
std::wstring DecodeUtf8(std::string_view bytes);

// Encodes UTF-16 code units as UTF-8. An unpaired surrogate becomes the replacement character, U+FFFD.
std::string EncodeUtf8(std::wstring_view text);

// How many bytes EncodeUtf8 makes of `text`.
std::size_t Utf8Length(std::wstring_view text);

}  // namespace vek

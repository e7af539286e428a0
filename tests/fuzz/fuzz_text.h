// What the fuzz targets share: bytes as texts, and a check that stops the fuzzer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "addin/text/utf8.h"

namespace vek::fuzz {

inline std::string_view Bytes(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// The bytes as text, one character each, so that every input is a text.
inline std::wstring Widened(std::string_view bytes) {
  std::wstring text;
  for (const char byte : bytes) text.push_back(static_cast<unsigned char>(byte));
  return text;
}

// The text that the server makes of such bytes.
inline std::wstring TextOf(std::string_view bytes) {
  std::wstring text = DecodeUtf8(bytes);
  return text.empty() ? Widened(bytes) : text;
}

inline bool IsAscii(std::string_view bytes) {
  for (const char byte : bytes)
    if (static_cast<unsigned char>(byte) >= 0x80) return false;
  return true;
}

inline void Require(bool holds, int line = __builtin_LINE()) {
  if (holds) return;
  std::fprintf(stderr, "line %d doesn't hold\n", line);
  std::abort();
}

}  // namespace vek::fuzz

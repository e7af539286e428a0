// What the fuzz targets share: bytes as texts, and a check that stops the fuzzer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

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

inline void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace vek::fuzz

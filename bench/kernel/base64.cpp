#include "bench/kernel/base64.h"

#include <array>
#include <cstdint>

namespace bench::kernel {

namespace {

constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// For each character its six bits, or -1.
std::array<int, 256> SixBits() {
  std::array<int, 256> bits;
  bits.fill(-1);
  for (int i = 0; i < 64; ++i) bits[static_cast<std::uint8_t>(kLetters[i])] = i;
  return bits;
}

}  // namespace

std::string Base64(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = bytes.size() - i < 3 ? bytes.size() - i : 3;
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k)
      group = group << 8 | (k < count ? static_cast<std::uint8_t>(bytes[i + k]) : 0u);
    for (std::size_t k = 0; k < 4; ++k) text += k <= count ? kLetters[group >> (18 - 6 * k) & 63] : '=';
  }
  return text;
}

std::optional<std::string> FromBase64(std::string_view text) {
  static const std::array<int, 256> six_bits = SixBits();
  for (int i = 0; i < 2 && text.ends_with('='); ++i) text.remove_suffix(1);
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3 + 2);
  std::uint32_t group = 0;
  int count = 0;
  for (const char letter : text) {
    const int bits = six_bits[static_cast<std::uint8_t>(letter)];
    if (bits < 0) return std::nullopt;
    group = group << 6 | static_cast<std::uint32_t>(bits);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(group >> count & 0xff);
  }
  return bytes;
}

}  // namespace bench::kernel

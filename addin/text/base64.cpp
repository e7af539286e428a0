#include "addin/text/base64.h"

#include <array>
#include <cstdint>

namespace vek {
namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::int8_t kNone = -1;

// The six bits that each byte stands for.
constexpr std::array<std::int8_t, 256> kBits = [] {
  std::array<std::int8_t, 256> bits{};
  bits.fill(kNone);
  for (std::size_t i = 0; i < kAlphabet.size(); ++i)
    bits[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::int8_t>(i);
  return bits;
}();

struct Group {
  std::uint32_t bits = 0;  // the first byte on top of 24 bits
  std::size_t bytes = 0;
};

// The next four characters of the alphabet, or those that remain; moves `position` behind them.
Group ReadGroup(std::string_view text, std::size_t& position) {
  Group group;
  int characters = 0;
  for (; characters < 4 && position < text.size(); ++position) {
    const std::int8_t six = kBits[static_cast<unsigned char>(text[position])];
    if (six == kNone) continue;
    group.bits = group.bits << 6 | static_cast<std::uint32_t>(six);
    ++characters;
  }
  group.bits <<= 6 * (4 - characters);
  group.bytes = static_cast<std::size_t>(characters * 6 / 8);
  return group;
}

}  // namespace

bool DecodeBase64(std::string_view text, unsigned char* buffer, std::size_t& size) {
  const std::size_t room = size;
  bool fits = true;
  size = 0;
  for (std::size_t position = 0; position < text.size() && text[position] != '\0';) {
    const Group group = ReadGroup(text, position);
    fits = fits && group.bytes <= room - size;
    if (fits)
      for (std::size_t i = 0; i < group.bytes; ++i)
        buffer[size + i] = static_cast<unsigned char>(group.bits >> (16 - 8 * i));
    size += group.bytes;
  }
  return fits;
}

}  // namespace vek

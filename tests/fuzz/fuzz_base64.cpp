// The first byte tells how much room there is, the others are the text. Nothing is written behind the room;
// what fits is the same with more room; and the text without its foreign characters decodes to the same
// bytes.
#include <vector>

#include "addin/text/base64.h"
#include "tests/fuzz/fuzz_text.h"

using vek::fuzz::Require;

namespace {

bool IsOfTheAlphabet(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '/';
}

// Just as large as the room, so that a sanitiser sees each byte beyond it.
std::vector<unsigned char> Decoded(std::string_view text, std::size_t room, std::size_t& size, bool& fits) {
  std::vector<unsigned char> buffer(room);
  size = room;
  fits = vek::DecodeBase64(text, buffer.data(), size);
  Require(fits == (size <= room));
  buffer.resize(std::min(size, room));
  return buffer;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view text = vek::fuzz::Bytes(data + 1, size - 1);
  std::size_t counted = 0, counted_in_less = 0;
  bool fits = false, fits_in_less = false;
  const auto bytes = Decoded(text, text.size(), counted, fits);
  Require(fits && counted <= text.size() * 3 / 4);
  const auto fewer = Decoded(text, data[0], counted_in_less, fits_in_less);
  Require(counted_in_less == counted);
  if (fits_in_less) Require(fewer == bytes);

  if (text.find('\0') != std::string_view::npos) return 0;
  std::string plain;
  for (const char c : text)
    if (IsOfTheAlphabet(c)) plain += c;
  Require(counted == plain.size() * 6 / 8);
  Require(Decoded(plain, text.size(), counted, fits) == bytes);
  return 0;
}

// The bytes of a request as text, and base64 in both directions. The first byte tells how much room there is
// to decode into, the others are the text.
//
// What decodes as UTF-8 encodes to the same bytes. Of base64, nothing is written behind the room, what fits
// is the same with more room, foreign characters change nothing, and three decoders that were written apart
// agree.
#include <vector>

#include "addin/text/base64.h"
#include "bench/host/kernel_link/base64.h"
#include "bench/kernel/base64.h"
#include "tests/fuzz/fuzz_text.h"

using vek::fuzz::Require;

namespace {

void CheckUtf8(std::string_view bytes) {
  const std::wstring text = vek::DecodeUtf8(bytes);
  Require(text.size() <= bytes.size());
  if (!text.empty()) Require(vek::EncodeUtf8(text) == bytes);

  // Pairs of bytes as units: any text, sound or not, encodes to something that decodes.
  std::wstring units;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
    units.push_back(static_cast<wchar_t>(static_cast<std::uint8_t>(bytes[i]) |
                                         static_cast<std::uint8_t>(bytes[i + 1]) << 8));
  const std::string encoded = vek::EncodeUtf8(units);
  Require(encoded.size() == vek::Utf8Length(units));
  Require(vek::DecodeUtf8(encoded).size() == units.size());
}

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

std::string DecodedByTheAddin(std::string_view text) {
  std::size_t size = 0;
  bool fits = false;
  const auto bytes = Decoded(text, text.size(), size, fits);
  return {bytes.begin(), bytes.end()};
}

void CheckLenientBase64(std::string_view text, std::size_t little_room) {
  std::size_t counted = 0, counted_in_less = 0;
  bool fits = false, fits_in_less = false;
  const auto bytes = Decoded(text, text.size(), counted, fits);
  Require(fits && counted <= text.size() * 3 / 4);
  const auto fewer = Decoded(text, little_room, counted_in_less, fits_in_less);
  Require(counted_in_less == counted);
  if (fits_in_less) Require(fewer == bytes);

  if (text.find('\0') != std::string_view::npos) return;
  std::string plain;
  for (const char c : text)
    if (IsOfTheAlphabet(c)) plain += c;
  Require(counted == plain.size() * 6 / 8);
  Require(Decoded(plain, text.size(), counted, fits) == bytes);
}

void CheckTheOthers(std::string_view text) {
  const std::string encoded = bench::EncodeBase64(text);
  Require(bench::kernel::Base64(text) == encoded);
  Require(bench::DecodeBase64(encoded) == text && bench::kernel::FromBase64(encoded) == text);
  Require(DecodedByTheAddin(encoded) == text);

  const auto by_kernel = bench::kernel::FromBase64(text);
  if (by_kernel) Require(*by_kernel == DecodedByTheAddin(text));
  if (const auto by_host = bench::DecodeBase64(text)) Require(by_kernel == by_host);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CheckUtf8(vek::fuzz::Bytes(data, size));
  if (size == 0) return 0;
  const std::string_view text = vek::fuzz::Bytes(data + 1, size - 1);
  CheckLenientBase64(text, data[0]);
  CheckTheOthers(text);
  return 0;
}

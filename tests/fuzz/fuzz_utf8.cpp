// The input is the bytes of a request: what decodes at all must encode to the same bytes.
#include "addin/text/utf8.h"
#include "tests/fuzz/fuzz_text.h"

using vek::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = vek::fuzz::Bytes(data, size);
  const std::wstring text = vek::DecodeUtf8(bytes);
  Require(text.size() <= bytes.size());
  if (!text.empty()) Require(vek::EncodeUtf8(text) == bytes);

  // Pairs of bytes as units: any text, sound or not, encodes to something that decodes.
  std::wstring units;
  for (std::size_t i = 0; i + 1 < size; i += 2)
    units.push_back(static_cast<wchar_t>(data[i] | (data[i + 1] << 8)));
  const std::string encoded = vek::EncodeUtf8(units);
  Require(encoded.size() == vek::Utf8Length(units));
  Require(vek::DecodeUtf8(encoded).size() == units.size());
  return 0;
}

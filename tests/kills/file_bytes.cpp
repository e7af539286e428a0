#include "tests/kills/file_bytes.h"

#include <fstream>
#include <iterator>
#include <string_view>

namespace vek::kills {

std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::string Base64Of(std::string bytes) {
  constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  while (bytes.size() % 3 != 0) bytes += ' ';
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    unsigned group = 0;
    for (std::size_t k = 0; k < 3; ++k) group = group << 8 | static_cast<unsigned char>(bytes[i + k]);
    for (int shift = 18; shift >= 0; shift -= 6) text += kAlphabet[group >> shift & 63];
  }
  return text;
}

}  // namespace vek::kills

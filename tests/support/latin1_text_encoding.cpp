// The code page of native tests: Latin-1, where each byte is one character.
#include "addin/platform/text_encoding.h"

namespace vek {

std::wstring DecodeAnsi(std::string_view bytes) {
  std::wstring text;
  for (const char byte : bytes) text.push_back(static_cast<unsigned char>(byte));
  return text;
}

std::string EncodeAnsi(std::wstring_view text) {
  std::string bytes;
  for (const wchar_t c : text) bytes.push_back(c < 0x100 ? static_cast<char>(c) : '?');
  return bytes;
}

}  // namespace vek

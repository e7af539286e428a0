#include "addin/platform/base64_encoding.h"

#include <windows.h>

#include <wincrypt.h>

namespace vek {

std::optional<std::string> EncodeBase64(std::string_view bytes) {
  constexpr DWORD kWithoutLineBreaks = CRYPT_STRING_BASE64 | CRYPT_STRING_NOCRLF;
  const BYTE* const data = reinterpret_cast<const BYTE*>(bytes.data());
  const DWORD count = static_cast<DWORD>(bytes.size());
  DWORD room = 0;  // with the terminator
  if (!::CryptBinaryToStringA(data, count, kWithoutLineBreaks, nullptr, &room)) return std::nullopt;
  std::string text(room, '\0');
  if (!::CryptBinaryToStringA(data, count, kWithoutLineBreaks, text.data(), &room)) return std::nullopt;
  text.resize(room);
  return text;
}

}  // namespace vek

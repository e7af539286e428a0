#include "addin/platform/text_encoding.h"

#include <windows.h>

namespace vek {

std::wstring DecodeAnsi(std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  const int length = ::MultiByteToWideChar(CP_THREAD_ACP, 0, bytes.data(), size, nullptr, 0);
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  ::MultiByteToWideChar(CP_THREAD_ACP, 0, bytes.data(), size, text.data(), length);
  return text;
}

std::string EncodeAnsi(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  const int length = ::WideCharToMultiByte(CP_THREAD_ACP, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  ::WideCharToMultiByte(CP_THREAD_ACP, 0, text.data(), size, bytes.data(), length, nullptr, nullptr);
  return bytes;
}

}  // namespace vek

#include "bench/host/text.h"

#include <windows.h>

#include <algorithm>

namespace bench {

std::wstring Upper(std::wstring_view text) {
  std::wstring upper(text);
  CharUpperBuffW(upper.data(), static_cast<DWORD>(upper.size()));
  return upper;
}

std::wstring Lower(std::wstring_view text) {
  std::wstring lower(text);
  CharLowerBuffW(lower.data(), static_cast<DWORD>(lower.size()));
  return lower;
}

bool EqualsIgnoringCase(std::wstring_view a, std::wstring_view b) {
  return a.size() == b.size() && Upper(a) == Upper(b);
}

std::string ToUtf8(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  std::string bytes(WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                      nullptr);
  return bytes;
}

std::wstring FromUtf8(std::string_view bytes) {
  const int length = static_cast<int>(bytes.size());
  std::wstring text(MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, nullptr, 0), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, text.data(), static_cast<int>(text.size()));
  return text;
}

std::wstring_view Bounded(const wchar_t* text, std::size_t size) {
  return {text, static_cast<std::size_t>(std::find(text, text + size, L'\0') - text)};
}

}  // namespace bench

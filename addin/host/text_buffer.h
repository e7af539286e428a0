// The toolkit's fixed-size text buffers: 32 characters for names, 180 for model names, 260 for paths.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace vek {

// Copies `text` into `buffer`, cut to what it holds, always terminated.
template <std::size_t N>
void CopyCut(wchar_t (&buffer)[N], std::wstring_view text) {
  const std::size_t length = std::min(text.size(), N - 1);
  std::copy_n(text.data(), length, buffer);
  buffer[length] = L'\0';
}

// Copies `text` into `buffer` whole; false, with an empty buffer, when it doesn't fit.
template <std::size_t N>
[[nodiscard]] bool CopyWhole(wchar_t (&buffer)[N], std::wstring_view text) {
  buffer[0] = L'\0';
  if (text.size() >= N) return false;
  CopyCut(buffer, text);
  return true;
}

// The text in `buffer` up to its terminator, or all of it when the host wrote none.
template <std::size_t N>
std::wstring BufferText(const wchar_t (&buffer)[N]) {
  return std::wstring(buffer, std::find(buffer, buffer + N, L'\0'));
}

}  // namespace vek

// Text at the host's borders: case without regard to it, and UTF-8 for files and console.
#pragma once

#include <string>
#include <string_view>

namespace bench {

std::wstring Upper(std::wstring_view text);
std::wstring Lower(std::wstring_view text);
bool EqualsIgnoringCase(std::wstring_view a, std::wstring_view b);

// An unpaired surrogate becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);
// Bytes that are no UTF-8 become U+FFFD.
std::wstring FromUtf8(std::string_view bytes);

// Copies a text and its terminator into a buffer of the toolkit; false, and nothing copied, when it doesn't
// fit.
template <std::size_t N>
bool CopyOut(std::wstring_view text, wchar_t (&buffer)[N]) {
  if (text.size() >= N) return false;
  text.copy(buffer, text.size());
  buffer[text.size()] = L'\0';
  return true;
}

// The text in a buffer of `size` characters that a caller handed in; all of it when it has no terminator.
std::wstring_view Bounded(const wchar_t* text, std::size_t size);

}  // namespace bench

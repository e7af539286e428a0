#include "addin/text/utf8.h"

#include <cstdint>

namespace vek {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstBeyondBasicPlane = 0x10000;
constexpr char32_t kLastCodePoint = 0x10FFFF;

constexpr bool IsHighSurrogate(char32_t c) {
  return c >= 0xD800 && c <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t c) {
  return c >= 0xDC00 && c <= 0xDFFF;
}
constexpr bool IsSurrogate(char32_t c) {
  return c >= 0xD800 && c <= 0xDFFF;
}

// How a sequence starts: its bytes in all, the bits of its first byte, and the least value that needs this
// length.
struct Lead {
  int length = 0;
  char32_t bits = 0;
  char32_t least = 0;
};

constexpr Lead ReadLead(std::uint8_t byte) {
  if (byte >= 0xC0 && byte < 0xE0) return {2, static_cast<char32_t>(byte & 0x1F), 0x80};
  if (byte >= 0xE0 && byte < 0xF0) return {3, static_cast<char32_t>(byte & 0x0F), 0x800};
  if (byte >= 0xF0 && byte < 0xF8) return {4, static_cast<char32_t>(byte & 0x07), kFirstBeyondBasicPlane};
  return {};
}

// Reads the sequence of several bytes at `position` and moves behind it; false when it is malformed.
bool ReadSequence(std::string_view bytes, std::size_t& position, char32_t& code_point) {
  const Lead lead = ReadLead(static_cast<std::uint8_t>(bytes[position]));
  if (lead.length == 0 || bytes.size() - position < static_cast<std::size_t>(lead.length)) return false;
  code_point = lead.bits;
  for (int i = 1; i < lead.length; ++i) {
    const auto byte = static_cast<std::uint8_t>(bytes[position + static_cast<std::size_t>(i)]);
    if ((byte & 0xC0) != 0x80) return false;
    code_point = (code_point << 6) | (byte & 0x3F);
  }
  position += static_cast<std::size_t>(lead.length);
  return code_point >= lead.least && code_point <= kLastCodePoint && !IsSurrogate(code_point);
}

// The code point at `position`, which moves behind its one or two units.
char32_t NextCodePoint(std::wstring_view text, std::size_t& position) {
  const auto unit = static_cast<char32_t>(text[position++]);
  if (IsHighSurrogate(unit) && position < text.size() &&
      IsLowSurrogate(static_cast<char32_t>(text[position]))) {
    const auto low = static_cast<char32_t>(text[position++]);
    return kFirstBeyondBasicPlane + ((unit - 0xD800) << 10) + (low - 0xDC00);
  }
  return IsSurrogate(unit) || unit > kLastCodePoint ? kReplacement : unit;
}

constexpr std::size_t EncodedLength(char32_t c) {
  if (c < 0x80) return 1;
  if (c < 0x800) return 2;
  return c < kFirstBeyondBasicPlane ? 3 : 4;
}

void AppendEncoded(std::string& out, char32_t c) {
  const auto tail = [&out, c](int shift) { out.push_back(static_cast<char>(0x80 | ((c >> shift) & 0x3F))); };
  switch (EncodedLength(c)) {
    case 1:
      out.push_back(static_cast<char>(c));
      return;
    case 2:
      out.push_back(static_cast<char>(0xC0 | (c >> 6)));
      break;
    case 3:
      out.push_back(static_cast<char>(0xE0 | (c >> 12)));
      tail(6);
      break;
    default:
      out.push_back(static_cast<char>(0xF0 | (c >> 18)));
      tail(12);
      tail(6);
      break;
  }
  tail(0);
}

}  // namespace

std::wstring DecodeUtf8(std::string_view bytes) {
  std::wstring text(bytes.size(), L'\0');
  std::size_t written = 0;
  for (std::size_t i = 0; i < bytes.size();) {
    const auto byte = static_cast<std::uint8_t>(bytes[i]);
    if (byte < 0x80) {
      text[written++] = byte;
      ++i;
      continue;
    }
    char32_t code_point = 0;
    if (!ReadSequence(bytes, i, code_point)) return {};
    if (code_point >= kFirstBeyondBasicPlane) {
      const char32_t offset = code_point - kFirstBeyondBasicPlane;
      text[written++] = static_cast<wchar_t>(0xD800 + (offset >> 10));
      code_point = 0xDC00 + (offset & 0x3FF);
    }
    text[written++] = static_cast<wchar_t>(code_point);
  }
  text.resize(written);
  return text;
}

std::string EncodeUtf8(std::wstring_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) AppendEncoded(bytes, NextCodePoint(text, i));
  return bytes;
}

std::size_t Utf8Length(std::wstring_view text) {
  std::size_t length = 0;
  for (std::size_t i = 0; i < text.size();) length += EncodedLength(NextCodePoint(text, i));
  return length;
}

}  // namespace vek

#include "addin/text/utf8.h"

#include <gtest/gtest.h>

namespace vek {
namespace {

TEST(Utf8, GoesToUtf16UnitsAndBack) {
  const std::pair<std::string, std::wstring> cases[] = {
      {"", L""},
      {std::string("a\0b", 3), std::wstring(L"a\0b", 3)},
      {"\xC2\x80", L"\x80"},
      {"\xDF\xBF", L"\x7FF"},
      {"\xE0\xA0\x80", L"\x800"},
      {"\xED\x9F\xBF", L"\xD7FF"},
      {"\xEF\xBF\xBF", L"\xFFFF"},
      {"\xF0\x90\x80\x80", {wchar_t(0xD800), wchar_t(0xDC00)}},
      {"\xF4\x8F\xBF\xBF", {wchar_t(0xDBFF), wchar_t(0xDFFF)}},
  };
  for (const auto& [bytes, units] : cases) {
    EXPECT_EQ(DecodeUtf8(bytes), units) << bytes;
    EXPECT_EQ(EncodeUtf8(units), bytes);
    EXPECT_EQ(Utf8Length(units), bytes.size()) << bytes;
  }
}

TEST(Utf8, DecodesNothingOfAMalformedText) {
  for (const char* const bytes : {
           "good \x80",             // stray continuation
           "\xC3",                  // cut off
           "\xC3(",                 // continuation missing
           "\xC0\xAF",              // overlong slash
           "\xE0\x80\xAF",          // overlong
           "\xED\xA0\x80",          // encoded surrogate
           "\xF4\x90\x80\x80",      // above 10FFFF
           "\xF8\x88\x80\x80\x80",  // five bytes
           "\xFF",
       })
    EXPECT_EQ(DecodeUtf8(bytes), L"") << bytes;
}

TEST(Utf8, EncodesUnpairedSurrogatesAsTheReplacementCharacter) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(EncodeUtf8(std::wstring{wchar_t(0xD83D), L'a'}), replacement + "a");
  EXPECT_EQ(EncodeUtf8(std::wstring{wchar_t(0xDD29), wchar_t(0xD83D)}), replacement + replacement);
  EXPECT_EQ(Utf8Length(std::wstring{wchar_t(0xD83D), L'a'}), 4u);
}

}  // namespace
}  // namespace vek

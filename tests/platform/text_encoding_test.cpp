#include "addin/platform/text_encoding.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace vek {
namespace {

// The locale of the calling thread, and with it its code page, for the length of a test.
class ThreadLocale {
 public:
  explicit ThreadLocale(WORD language) : former_(::GetThreadLocale()) {
    ::SetThreadLocale(MAKELCID(MAKELANGID(language, SUBLANG_DEFAULT), SORT_DEFAULT));
  }
  ~ThreadLocale() { ::SetThreadLocale(former_); }

 private:
  LCID former_;
};

TEST(TextEncoding, FollowsTheCodePageOfTheThread) {
  const struct {
    WORD language;
    const wchar_t* text;
    const char* bytes;
  } cases[] = {{LANG_ENGLISH, L"caf\u00e9 \u20ac", "caf\xE9 \x80"},
               {LANG_RUSSIAN, L"\u0416\u0443\u043a", "\xC6\xF3\xEA"},
               {LANG_JAPANESE, L"\u65e5", "\x93\xFA"}};
  for (const auto& [language, text, bytes] : cases) {
    const ThreadLocale locale(language);
    EXPECT_EQ(EncodeAnsi(text), bytes);
    EXPECT_EQ(DecodeAnsi(bytes), text);
  }
  const ThreadLocale locale(LANG_ENGLISH);
  EXPECT_EQ(EncodeAnsi(L"a\u65e5b"), "a?b") << "what the code page lacks";
}

TEST(TextEncoding, EmptyStaysEmptyAndZerosAreKept) {
  EXPECT_EQ(EncodeAnsi(L""), "");
  EXPECT_EQ(DecodeAnsi(""), L"");
  EXPECT_EQ(DecodeAnsi(std::string_view("a\0b", 3)), std::wstring_view(L"a\0b", 3));
}

}  // namespace
}  // namespace vek

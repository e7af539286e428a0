// Texts: case, messages and UTF-8. Numbers, and bytes that are no UTF-8, are the fuzzers' matter.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "addin/text/base64.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

TEST(WideText, TrimsTheFourBlanksAndNoOthers) {
  EXPECT_EQ(Trim(L" \t\r\n a b \n"), L"a b");
  EXPECT_EQ(Trim(L" \t "), L"");
  EXPECT_EQ(Trim(L"\f\x00A0 x\v"), L"\f\x00A0 x\v");
}

TEST(WideText, MapsTheCaseOfEachAlphabet) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"PART_01-Z", L"part_01-z"},
      {L"\x00C4\x00D6\x00DC\x00D0\x00DE", L"\x00E4\x00F6\x00FC\x00F0\x00FE"},
      {L"\x0100\x0118\x012E\x0132\x0139\x0147\x014A\x0160\x0176\x0178\x0179\x017D",
       L"\x0101\x0119\x012F\x0133\x013A\x0148\x014B\x0161\x0177\x00FF\x017A\x017E"},
      {L"\x0386\x0388\x038C\x038E\x038F\x0391\x03A9", L"\x03AC\x03AD\x03CC\x03CD\x03CE\x03B1\x03C9"},
      {L"\x0401\x0410\x042F\x0460\x04C0\x04C1\x04D0", L"\x0451\x0430\x044F\x0461\x04CF\x04C2\x04D1"}};
  for (const auto& [upper, lower] : cases) {
    EXPECT_EQ(ToLower(upper), lower);
    EXPECT_EQ(ToUpper(lower), upper);
    EXPECT_EQ(ToUpper(upper), upper);
    EXPECT_EQ(ToLower(lower), lower);
    EXPECT_TRUE(EqualsIgnoreCase(upper, lower));
  }
}

TEST(WideText, LeavesWhatHasNoSimpleOtherCase) {
  // Multiplication and division sign, sharp s, dotted capital i and dotless small i, long s.
  const std::wstring text = L"\x00D7\x00F7\x00DF\x0130\x0131\x0138\x0149\x017F[]@`";
  EXPECT_EQ(ToLower(text), text);
  EXPECT_EQ(ToUpper(text), text);
  EXPECT_FALSE(EqualsIgnoreCase(L"[", L"{"));
  EXPECT_FALSE(EqualsIgnoreCase(L"POST", L"POS"));
}

using format_detail::Kind;
using format_detail::Matches;

constexpr bool Takes(std::wstring_view text, std::initializer_list<Kind> kinds) {
  return Matches(text, std::span<const Kind>(kinds.begin(), kinds.size()));
}

// What Format refuses to compile.
static_assert(Takes(L"%s %S %d %u %lu %04x %g %lf %.3f %c %p %%",
                    {Kind::kWide, Kind::kNarrow, Kind::kSigned, Kind::kUnsigned, Kind::kUnsigned,
                     Kind::kUnsigned, Kind::kFloating, Kind::kFloating, Kind::kFloating, Kind::kCharacter,
                     Kind::kPointer}));
static_assert(!Takes(L"%s and %s", {Kind::kWide}), "too few arguments");
static_assert(!Takes(L"%s", {Kind::kWide, Kind::kWide}), "too many arguments");
static_assert(!Takes(L"%d", {Kind::kFloating}));
static_assert(!Takes(L"%s", {Kind::kNarrow}), "narrow text needs %S");
static_assert(!Takes(L"%q", {Kind::kWide}), "unknown letter");
static_assert(!Takes(L"100%", {Kind::kWide}), "a percent sign at the end");

TEST(Format, ReplacesEachKindOfArgument) {
  EXPECT_EQ(Format(L"op='%s' %S", std::wstring(L"draw"), "bad"), L"op='draw' bad");
  EXPECT_EQ(Format(L"%d|%d|%u|%lu", -7, std::numeric_limits<std::int64_t>::min(), 7u, 4000000000ul),
            L"-7|-9223372036854775808|7|4000000000");
  EXPECT_EQ(Format(L"\\u%04x", 0x1Fu), L"\\u001f");
  EXPECT_EQ(Format(L"<%s>", L"100%s %d%%"), L"<100%s %d%%>");
  EXPECT_EQ(Format(L"%c:%d%%", L'L', 2), L"L:2%");
  EXPECT_EQ(Format(L"%p", reinterpret_cast<const void*>(0xAB12)), L"000000000000AB12");
  EXPECT_EQ(Format(L"%S", "\xE9t\xE9"), L"\u00E9t\u00E9");
}

TEST(Format, WritesFloatingNumbersTheWayOfC99) {
  EXPECT_EQ(Format(L"%.3g %.6g", 0.00012345, 2.0 / 3.0), L"0.000123 0.666667");
  EXPECT_EQ(Format(L"%.1f %.2f %.3f %.4f %lf", 0.25, -0.125, 2.5, 1.0 / 3.0, 1.0),
            L"0.2 -0.12 2.500 0.3333 1.000000");
  EXPECT_EQ(Format(L"%g %.1f %g", INFINITY, -INFINITY, NAN), L"inf -inf nan");
}

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

TEST(Utf8, EncodesUnpairedSurrogatesAsTheReplacementCharacter) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(EncodeUtf8(std::wstring{wchar_t(0xD83D), L'a'}), replacement + "a");
  EXPECT_EQ(EncodeUtf8(std::wstring{wchar_t(0xDD29), wchar_t(0xD83D)}), replacement + replacement);
}

// What the decoders have in common is the fuzzer's matter.
TEST(DecodeBase64, ANulEndsTheTextWhereAGroupBegins) {
  using namespace std::string_literals;
  for (const auto& [text, bytes] : {std::pair("TWFu\0TWFu"s, "Man"s), {"TW\0FuTWFu"s, "ManMan"s}}) {
    std::string buffer(text.size(), '#');
    std::size_t size = text.size();
    EXPECT_TRUE(DecodeBase64(text, reinterpret_cast<unsigned char*>(buffer.data()), size)) << text;
    EXPECT_EQ(buffer.substr(0, size), bytes) << text;
  }
}

TEST(DecodeBase64, CountsOnWhenTheBufferIsFull) {
  unsigned char buffer[5] = {0, 0, 0, '#', '#'};
  std::size_t size = 4;
  EXPECT_FALSE(DecodeBase64("TWFuTWFuTQ", buffer, size));
  EXPECT_EQ(size, 7u);
  EXPECT_EQ(std::string(buffer, buffer + 5), "Man##");
}

}  // namespace
}  // namespace vek

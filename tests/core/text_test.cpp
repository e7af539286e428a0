// Texts: case, numbers at their head, messages and UTF-8.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

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

TEST(WideText, ReadsLeadingIntegers) {
  const std::pair<const wchar_t*, std::int32_t> cases[] = {{L"42", 42},
                                                           {L" \t\v-7x", -7},
                                                           {L"+8", 8},
                                                           {L"007:2", 7},
                                                           {L"- 1", 0},
                                                           {L"0x10", 0},
                                                           {L"2147483647", 2147483647},
                                                           {L"2147483648", 2147483647}};
  for (const auto& [text, value] : cases) EXPECT_EQ(ReadLeadingInteger(text), value) << text;
  EXPECT_EQ(ReadLeadingInteger(L"99999999999999999999999"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(ReadLeadingInteger(L"-2147483649"), std::numeric_limits<std::int32_t>::min());
}

TEST(WideText, ReadsLeadingNumbersAsFarAsTheyGo) {
  const struct {
    std::wstring text;
    double value;
    std::size_t consumed;
  } cases[] = {{L"12abc", 12, 2},         {L"1.5e3", 1500, 5},    {L" \n+2.5 mm", 2.5, 6},
               {L"-.5", -0.5, 3},         {L"5.e2", 500, 4},      {L"1e", 1, 1},
               {L"1e+x", 1, 1},           {L"1E-2", 0.01, 4},     {L"0x10", 16, 4},
               {L"-0X1.8p3", -12, 8},     {L"0x1.p-1", 0.5, 7},   {L"0x", 0, 1},
               {L"0x1p", 1, 3},           {L"inf", kInfinity, 3}, {L"-INFINITYx", -kInfinity, 9},
               {L"infinit", kInfinity, 3}};
  for (const auto& [text, value, consumed] : cases) {
    std::size_t length = 99;
    EXPECT_EQ(ReadLeadingNumber(text, &length), value) << text;
    EXPECT_EQ(length, consumed) << text;
  }
  EXPECT_EQ(ReadLeadingNumber(L"9007199254740993"), 9007199254740992.0);
  EXPECT_EQ(ReadLeadingNumber(L"4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(ReadLeadingNumber(L"1.7976931348623157e308"), std::numeric_limits<double>::max());
}

TEST(WideText, GivesInfinityOrZeroForNumbersOutOfRangeAndReadsNotANumber) {
  EXPECT_EQ(ReadLeadingNumber(L"1e309"), kInfinity);
  EXPECT_EQ(ReadLeadingNumber(L"-1e99999999999999999999"), -kInfinity);
  EXPECT_EQ(ReadLeadingNumber(L"0x1p99999999999999999999"), kInfinity);
  EXPECT_TRUE(std::signbit(ReadLeadingNumber(L"-1e-99999999999999999999")));
  EXPECT_EQ(ReadLeadingNumber(L"0x1p-2000"), 0.0);
  EXPECT_EQ(ReadLeadingNumber(L"0." + std::wstring(400, L'0') + L"1"), 0.0);
  EXPECT_TRUE(std::isnan(ReadLeadingNumber(L" NaN5")));
  // 400 zeros and an exponent that takes them back: 0.1e1.
  EXPECT_EQ(ReadLeadingNumber(L"0." + std::wstring(400, L'0') + L"1e401"), 1.0);
}

TEST(WideText, ConsumesNothingWhereThereIsNoNumber) {
  for (const wchar_t* const text :
       {L"", L"  ", L"x", L"-", L"+-1", L".", L"-.e1", L"e5", L"in", L"na", L"\x0661"}) {
    std::size_t length = 99;
    EXPECT_EQ(ReadLeadingNumber(text, &length), 0.0);
    EXPECT_EQ(length, 0u) << text;
  }
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
  EXPECT_EQ(Format(L"%g %g %g %g", 0.0, 1.5, 1e7, -1.25e-7), L"0 1.5 1e+07 -1.25e-07");
  EXPECT_EQ(Format(L"%g %g", 123456.0, 1234567.0), L"123456 1.23457e+06");
  EXPECT_EQ(Format(L"%g", 1e-310), L"1e-310");
  EXPECT_EQ(Format(L"%.3g %.6g", 0.00012345, 2.0 / 3.0), L"0.000123 0.666667");
  EXPECT_EQ(Format(L"%.1f %.2f %.3f %.4f %lf", 0.25, -0.125, 2.5, 1.0 / 3.0, 1.0),
            L"0.2 -0.12 2.500 0.3333 1.000000");
  EXPECT_EQ(Format(L"%.3f", -0.0), L"-0.000");
  EXPECT_EQ(Format(L"%g %.1f %g", INFINITY, -INFINITY, NAN), L"inf -inf nan");
}

TEST(Format, WritesTheWidestNumberWhole) {
  // 2^1024 - 2^971 has 309 digits before its point.
  const std::wstring text = Format(L"%.4f", std::numeric_limits<double>::max());
  EXPECT_EQ(text.size(), 309u + 5u);
  EXPECT_EQ(text.substr(0, 12), L"179769313486");
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

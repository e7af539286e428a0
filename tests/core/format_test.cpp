#include "addin/text/format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vek {
namespace {

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

}  // namespace
}  // namespace vek

// What a client's expression says.
#include "addin/ops/parameters/expression.h"

#include <gtest/gtest.h>

namespace vek::parameters {
namespace {

TEST(Expression, IsANumberWithAnOptionalUnit) {
  const struct {
    const wchar_t* text;
    double number;
    const wchar_t* unit;
  } cases[] = {
      {L" -2.5e1 mm ", -25, L"mm"}, {L"3 sq in", 3, L"sq in"}, {L"7 ul", 7, L""},
      {L"7 ulx", 7, L"ulx"},        {L"0x10 MM", 16, L"MM"},   {L".5\tin\r\n", .5, L"in"},
  };
  for (const auto& [text, number, unit] : cases) {
    const auto parsed = ParseNumber(text);
    ASSERT_TRUE(parsed) << testing::PrintToString(std::wstring(text));
    EXPECT_EQ(parsed->number, number);
    EXPECT_EQ(parsed->unit, unit);
  }
  for (const wchar_t* text : {L"", L"  ", L"mm", L"mm 5", L"- 5", L"ul"})
    EXPECT_FALSE(ParseNumber(text)) << testing::PrintToString(std::wstring(text));
}

TEST(Expression, IsATruthByWordOrNumber) {
  for (const wchar_t* text : {L"true", L" Yes ", L"1", L"2", L"-0.1", L"1 0"})
    EXPECT_EQ(ParseTruth(text), true);
  for (const wchar_t* text : {L"FALSE", L"no", L"0", L"0.0", L"-0", L"0 1"})
    EXPECT_EQ(ParseTruth(text), false);
  for (const wchar_t* text : {L"", L" ", L"maybe", L"truely"}) EXPECT_EQ(ParseTruth(text), std::nullopt);
}

}  // namespace
}  // namespace vek::parameters

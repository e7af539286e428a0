// Edge and face selectors: their text, and which numbers they choose.
#include "addin/ops/feature/selector_syntax.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

namespace vek::feature {
namespace {

constexpr auto kLargest = SelectorKind::kLargest;
constexpr auto kSmallest = SelectorKind::kSmallest;

TEST(SelectorSyntax, OnlyTheTwoEndsCount) {
  const struct {
    const wchar_t* text;
    SelectorKind kind;
    int axis;
  } cases[] = {
      {L">Z", kLargest, 2},
      {L"> z", kLargest, 2},
      {L">top Z", kLargest, 2},
      {L">AZ", kLargest, 2},
      {L"\t<x\r\n", kSmallest, 0},
      {L"|Y", SelectorKind::kAlong, 1},
      {L"|<Xy", SelectorKind::kAlong, 1},
  };
  for (const auto& [text, kind, axis] : cases) {
    SCOPED_TRACE(testing::PrintToString(std::wstring(text)));
    const auto selector = ReadEdgeSelector(text);
    ASSERT_TRUE(selector);
    EXPECT_EQ(selector->kind, kind);
    EXPECT_EQ(selector->axis, axis);
    EXPECT_EQ(ReadFaceSelector(text).has_value(), kind != SelectorKind::kAlong);
  }
  for (const wchar_t* text :
       {L"", L" ", L">", L"Z", L" Z ", L"=Z", L"Z>", L">ZA", L">W", L">[", L">{", L"\">Z"})
    EXPECT_FALSE(ReadEdgeSelector(text)) << testing::PrintToString(std::wstring(text));
}

TEST(OutermostValues, TakesAllThatComeCloseToTheOutermost) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const struct {
    std::vector<double> values;
    SelectorKind kind;
    std::vector<std::size_t> chosen;
  } cases[] = {
      {{}, kLargest, {}},
      {{3, 1, 3, 2}, kLargest, {0, 2}},
      {{3, 1, 3, 1}, kSmallest, {1, 3}},
      {{-5, -5.5}, kLargest, {0}},
      // Whichever of the two comes first.
      {{1, 1 + 5e-10}, kLargest, {0, 1}},
      {{1 + 5e-10, 1}, kLargest, {0, 1}},
      {{1, 1 + 5e-10}, kSmallest, {0, 1}},
      {{1, 1 + 2e-9}, kLargest, {1}},
      {{1 + 2e-9, 1}, kLargest, {0}},
      {{1, 1 + 2e-9}, kSmallest, {0}},
      // Measured from the outermost, not from neighbour to neighbour.
      {{0, 0.8e-9, 1.6e-9}, kLargest, {1, 2}},
      {{kNan, 2, kInfinity}, kLargest, {1}},
      {{kNan}, kSmallest, {}},
  };
  for (const auto& [values, kind, chosen] : cases)
    EXPECT_EQ(OutermostValues(values, kind), chosen) << testing::PrintToString(values);
}

TEST(SpansRunAlong, ALineMayLeanByAQuarter) {
  const struct {
    std::array<double, 3> spans;
    int axis;
    bool along;
  } cases[] = {
      {{10, 0, 0}, 0, true},    {{10, 0, 0}, 2, false},     {{10, 2.5, 0}, 0, true},
      {{10, 2.6, 0}, 0, false}, {{10, 2.5, 2.5}, 0, true},  {{2.5, 2.6, 10}, 2, false},
      {{10, 10, 0}, 1, false},  {{0, 0.9e-9, 0}, 1, false}, {{0, 1e-9, 0}, 1, true},
  };
  for (const auto& [spans, axis, along] : cases)
    EXPECT_EQ(SpansRunAlong(spans, axis), along) << testing::PrintToString(spans) << " axis " << axis;
}

}  // namespace
}  // namespace vek::feature

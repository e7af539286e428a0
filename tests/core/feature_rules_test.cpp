// What the feature operations decide without the host: selectors, rows of charts, rotations.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "addin/ops/feature/hole_charts.h"
#include "addin/ops/feature/rotation_matrix.h"
#include "addin/ops/feature/selector_syntax.h"

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
      {L">top Z", kLargest, 2},
      {L"\t<x\r\n", kSmallest, 0},
      {L"|Y", SelectorKind::kAlong, 1},
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
      // Whichever of the two comes first.
      {{1, 1 + 5e-10}, kLargest, {0, 1}},
      {{1 + 5e-10, 1}, kLargest, {0, 1}},
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

using Rows = std::vector<std::wstring>;

TEST(HoleCharts, DesignationsTakeTheFormOfTheCharts) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"m8 x 1.25", L"M8x1.25"},
      {L"\tM8 X\r\n1.25 ", L"M8x1.25"},
      {L"m8 x 0.75", L"M8x.75"},
      {L"M8x0.", L"M8x."},
      {L"M8x00.5", L"M8x00.5"},
      // Only the first x counts, and not one that begins the text.
      {L"x0.5", L"x0.5"},
      {L"M8x1x0.5", L"M8x1x0.5"}};
  for (const auto& [text, normalized] : cases) EXPECT_EQ(NormalizeThreadDesignation(text), normalized);
}

TEST(HoleCharts, TheDiameterStandsBehindTheM) {
  const std::pair<const wchar_t*, double> cases[] = {{L"M8x1.25", 8}, {L" m2.5 ", 2.5}, {L"10x1", 10},
                                                     {L"M.5x1", 0.5}, {L"M1e3", 1},     {L"M1.2.3", 1.2},
                                                     {L"MM8", 0},     {L"M.", 0}};
  for (const auto& [text, diameter] : cases) EXPECT_DOUBLE_EQ(DesignationDiameter(text), diameter) << text;
}

TEST(HoleCharts, RowsStandInTheThreadTableOnly) {
  EXPECT_EQ(ReadThreadRows(L"! a chart\n"
                           L"UNITS METRIC\n"
                           L"M0x1 before the table\n"
                           L"THREAD_data of the series\r\n"
                           L"\n"
                           L"  fastener_id  diameter\r\n"
                           L"M3x.5\t3\r\n"
                           L"   ! M4x.7 is left out\n"
                           L" \t \n"
                           L"  M5x.8 5 ! fine\n"
                           L"M6x1"),
            (Rows{L"M3x.5", L"M5x.8", L"M6x1"}));
  EXPECT_EQ(ReadThreadRows(L"THREAD_DATA\nM3\n\x1AM4\n"), Rows{L"M3"}) << "it ends where text files do";
  EXPECT_EQ(ReadThreadRows(L"THREAD_DAT\nM3x.5\n"), Rows{});
  EXPECT_EQ(ReadThreadRows(L"FASTENER_ID\nM3x.5\n"), Rows{});
}

TEST(HoleCharts, ALongLineIsOneRowOf1024Characters) {
  const std::wstring long_line(1030, L'A');
  EXPECT_EQ(ReadThreadRows(L"THREAD_DATA\n" + long_line + L"\nM3\n"),
            (Rows{std::wstring(1024, L'A'), L"M3"}));
}

TEST(HoleCharts, RowsAreComparedLoosely) {
  const Rows rows = {L"M8X1.25", L"m8x1.25", L"M8x0.75", L"No_8"};
  EXPECT_EQ(FindThreadRow(rows, L"M8x1.25"), 0) << "the first of two that match";
  EXPECT_EQ(FindThreadRow(rows, L"M8x.75"), 2);
  EXPECT_EQ(FindThreadRow(rows, L"no 8"), 3);
  EXPECT_EQ(FindThreadRow(rows, L"M8"), std::nullopt);
  EXPECT_EQ(FindThreadRow({}, L"M8"), std::nullopt);
}

using Point = std::array<double, 3>;

// A row vector times the matrix.
Point Moved(const Point& point, const Transform& move) {
  Point result{};
  for (int column = 0; column < 3; ++column) {
    result[column] = move.rows[3][column];
    for (int row = 0; row < 3; ++row) result[column] += point[row] * move.rows[row][column];
  }
  return result;
}

void ExpectNear(const Point& point, const Point& expected) {
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(point[i], expected[i], 1e-9) << "axis " << i;
}

TEST(RotationMatrix, TurnsRightHandedAboutTheDirection) {
  // Right-handed: about z, x goes to y; about x, y goes to z; about y, z goes to x.
  const Point origin{0, 0, 0};
  const struct {
    Point direction;
    double angle_deg;
    Point from, to;
  } cases[] = {
      {{0, 0, 1}, 90, {1, 0, 0}, {0, 1, 0}},
      {{5, 0, 0}, 90, {0, 1, 0}, {0, 0, 1}},
      {{0, 2e-12, 0}, 90, {0, 0, 1}, {1, 0, 0}},
      {{0, 0, 1}, -90, {1, 0, 0}, {0, -1, 0}},
      // A third of a turn about the diagonal takes each axis to the next one; the squares of such lengths
      // are beyond a double.
      {{1e200, 1e200, 1e200}, 120, {1, 2, 3}, {3, 1, 2}},
      // cos 30° = √3/2, sin 30° = 1/2.
      {{0, 0, 1}, 30, {2, 0, 7}, {std::sqrt(3.0), 1, 7}},
  };
  for (const auto& [direction, angle_deg, from, to] : cases)
    ExpectNear(Moved(from, RotationMatrix(origin, direction, angle_deg)), to);
}

}  // namespace
}  // namespace vek::feature

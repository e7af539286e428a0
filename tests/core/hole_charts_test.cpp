#include "addin/ops/feature/hole_charts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vek::feature {
namespace {

using Rows = std::vector<std::wstring>;

TEST(HoleCharts, DesignationsTakeTheFormOfTheCharts) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"m8 x 1.25", L"M8x1.25"},
      {L"M8x1.25", L"M8x1.25"},
      {L"\tM8 X\r\n1.25 ", L"M8x1.25"},
      {L"M8x0.75", L"M8x.75"},
      {L"m8 x 0.75", L"M8x.75"},
      {L"M8x0.", L"M8x."},
      {L"M8x0", L"M8x0"},
      {L"M8x00.5", L"M8x00.5"},
      {L"M10.5", L"M10.5"},
      // Only the first x counts, and not one that begins the text.
      {L"x0.5", L"x0.5"},
      {L"M8x1x0.5", L"M8x1x0.5"},
      {L" \t ", L""}};
  for (const auto& [text, normalized] : cases) EXPECT_EQ(NormalizeThreadDesignation(text), normalized);
}

TEST(HoleCharts, TheDiameterStandsBehindTheM) {
  const std::pair<const wchar_t*, double> cases[] = {
      {L"M8x1.25", 8}, {L" m2.5 ", 2.5}, {L"10x1", 10}, {L"M.5x1", 0.5}, {L"M1e3", 1}, {L"M1.2.3", 1.2},
      {L"MM8", 0},     {L"M-8", 0},      {L"M", 0},     {L"M.", 0},      {L"", 0},     {L"UNC", 0}};
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
  EXPECT_EQ(ReadThreadRows(L"THREAD_DAT\nM3x.5\n"), Rows{});
  EXPECT_EQ(ReadThreadRows(L"FASTENER_ID\nM3x.5\n"), Rows{});
  EXPECT_EQ(ReadThreadRows(L""), Rows{});
}

TEST(HoleCharts, TextEndsWhereTextFilesDo) {
  EXPECT_EQ(ReadThreadRows(L"THREAD_DATA\nM3\n\x1AM4\n"), (Rows{L"M3"}));
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

}  // namespace
}  // namespace vek::feature

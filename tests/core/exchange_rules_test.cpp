// What analyses, screenshots and imports reckon without a model.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>

#include "addin/ops/common/import_names.h"
#include "addin/ops/drawing/orientation.h"
#include "addin/ops/exchange/analysis_arithmetic.h"
#include "addin/ops/exchange/import_file_name.h"
#include "addin/ops/exchange/screenshot_text.h"

namespace vek::exchange {
namespace {

TEST(Orientation, TurnsTheModelsAxesToTheScreen) {
  // Where the model's X, Y and Z go: x to the right, y up, z to the viewer.
  const double h = 1 / std::sqrt(2.0), s = 1 / std::sqrt(6.0), t = 1 / std::sqrt(3.0);
  const struct {
    const wchar_t *word, *canonical;
    double rows[3][3];
  } cases[] = {
      {L"", L"front", {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
      {L"TOP", L"top", {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}},
      {L"right", L"right", {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}},
      {L"Iso", L"iso", {{h, -h, 0}, {s, s, 2 * s}, {-t, -t, t}}},
      {L"home", L"iso", {{h, -h, 0}, {s, s, 2 * s}, {-t, -t, t}}},
  };
  for (const auto& [word, canonical, rows] : cases) {
    double matrix[4][4];
    std::wstring told;
    ASSERT_TRUE(drawing::OrientationMatrix(word, matrix, told)) << word;
    EXPECT_EQ(told, canonical);
    for (int row = 0; row < 4; ++row)
      for (int column = 0; column < 4; ++column)
        EXPECT_NEAR(matrix[row][column], row < 3 && column < 3 ? rows[row][column] : row == column, 1e-15);
  }
  double matrix[4][4] = {{7}};
  std::wstring told = L"before";
  EXPECT_FALSE(drawing::OrientationMatrix(L"bottom", matrix, told));
  EXPECT_EQ(matrix[0][0], 7);
  EXPECT_EQ(told, L"before");
}

TEST(DraftAngles, MeasureFacesAgainstThePull) {
  const std::pair<const wchar_t*, const wchar_t*> words[] = {
      {L" x", L"X"}, {L"yz", L"X"}, {L"Right ", L"X"}, {L"y", L"Y"},        {L"XZ", L"Y"}, {L"front", L"Y"},
      {L"z", L"Z"},  {L"XY", L"Z"}, {L"top", L"Z"},    {L"diagonal", L"Z"}, {L"", L"Z"},
  };
  for (const auto& [word, axis] : words) EXPECT_EQ(PullAxis(word), axis) << word;
  EXPECT_TRUE(AnalysisSelfCheck());

  const double tan5 = std::tan(5 * std::acos(-1.0) / 180);
  const std::tuple<Direction, const wchar_t*, double> cases[] = {
      {{0, 0, -7}, L"Z", 90}, {{0, 3, 0}, L"Y", 90},    {{0, 3, 0}, L"X", 0},
      {{0, 1, 1}, L"Z", 45},  {{1, 0, -tan5}, L"Z", 5}, {{0, 0, 1e-13}, L"Z", 0},
  };
  DraftScan scan;
  for (const auto& [normal, axis, degrees] : cases) {
    EXPECT_NEAR(FaceDraftAngle(normal, AxisDirection(axis)), degrees, 1e-9);
    scan.pull = AxisDirection(axis);
    AddFace(scan, normal);
  }
  EXPECT_NEAR(scan.min_angle, 0, 1e-9);
  EXPECT_NEAR(scan.max_angle, 90, 1e-9);
  EXPECT_EQ(scan.total, 6);
  EXPECT_EQ(scan.undrafted, 2);
}

TEST(ScreenshotText, KnowsViewsAndPaths) {
  const std::pair<const wchar_t*, const wchar_t*> views[] = {
      {L"", L"iso"},    {L" Home", L"iso"},  {L"ISO", L"iso"},
      {L"top", L"top"}, {L"isometric", L""}, {L"back", L""},
  };
  for (const auto& [text, word] : views) EXPECT_EQ(ScreenshotView(text), word) << text;

  for (const wchar_t* path : {L"C:\\a.png", L"c:a.png", LR"(\\host\share\a.png)", LR"(\\)"})
    EXPECT_TRUE(IsAbsolutePath(path)) << path;
  for (const wchar_t* path : {L"\\a.png", L"a.png", L"//host/a.png", L"ab:c", L"\\", L""})
    EXPECT_FALSE(IsAbsolutePath(path)) << path;
}

TEST(ScreenshotText, ShrinksPicturesInProportion) {
  const std::tuple<PictureSize, int, PictureSize> cases[] = {
      {{1920, 1080}, 1600, {1600, 900}},  // 1080 * 5 / 6
      {{1080, 1920}, 1600, {900, 1600}},
      {{1600, 900}, 1600, {1600, 900}},
      {{10, 1000}, 40, {1, 40}},  // 0.4 and a half is not yet 1, but no side vanishes
      {{30, 100}, 5, {2, 5}},     // 1.5 and a half
      {{1920, 1080}, 1, {1, 1}},
  };
  for (const auto& [size, limit, shrunk] : cases) EXPECT_EQ(ShrunkTo(size, limit), shrunk) << limit;

  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const std::pair<double, int> numbers[] = {{2.9, 2},
                                            {-2.9, -2},
                                            {std::nan(""), 0},
                                            {1e300, 2147483647},
                                            {-1e300, -2147483647 - 1},
                                            {kInfinity, 2147483647}};
  for (const auto& [number, cut] : numbers) EXPECT_EQ(CutToInteger(number), cut);
}

TEST(ImportNames, ComeOfTheFilesName) {
  const std::wstring a180(180, L'a'), a179(179, L'a');
  const std::tuple<std::wstring, std::wstring, std::wstring> cases[] = {
      {L"My Part-2.v3.STP", L"my_part_2_v3", L".STP"},
      {L"C:\\in\\a.stp", L"c__in_a", L".stp"},
      {L"whole", L"whole", L".step"},
      {L".stp", L"_stp", L".stp"},  // nothing before the dot
      {L"\u00c4.step", L"_", L".step"},
      {a180 + L".x", a179, L".x"},
  };
  for (const auto& [filename, name, extension] : cases) {
    EXPECT_EQ(ImportName(ImportBaseName(filename)), name);
    std::wstring told;
    EXPECT_TRUE(ImportExtension(filename, told));
    EXPECT_EQ(told, extension);
  }
  std::wstring told;
  EXPECT_FALSE(ImportExtension(L"a.b\\c", told));
  EXPECT_FALSE(ImportExtension(L"a./c", told));
  EXPECT_EQ(ImportName(L""), L"import_model");

  EXPECT_EQ(ImportCandidate(a179, 7), std::wstring(177, L'a') + L"_7");
}

}  // namespace
}  // namespace vek::exchange

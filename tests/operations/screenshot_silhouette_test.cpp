// The sample part in screenshots from the four views, pixel by pixel against the room that it takes.
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {
namespace {

constexpr int kWidth = 200, kHeight = 150;

double Squares(double a, double b) {
  return a * a + b * b;
}

// The sample, as its job describes it: a base, a pillar, and on that a hub with a bore and an oil cup.
bool IsMaterial(double x, double y, double z) {
  // The slot is 20 long and 11 wide: 4.5 from its middle to where its ends are round.
  const double past_slot = std::max(std::abs(z) - 4.5, 0.0);
  const bool in_holes = Squares(x + 47, past_slot) < 5.5 * 5.5 || Squares(x - 47, z) < 5.5 * 5.5;
  const bool base = std::abs(x) < 60 && y > 0 && y < 12 && std::abs(z) < 25 && !in_holes;
  const bool pillar = y > 11 && y < 60 && std::abs(x) < 35 - (y - 12) * 15 / 48 && std::abs(z) < 12;
  const double from_hub = Squares(x, y - 60);
  const bool hub = from_hub < 28 * 28 && std::abs(z) < 18;
  // 9 thick, and between 98 and 100 only 7 in the end.
  const double cup_radius = 9 - std::max(y - 98, 0.0);
  const bool cup = y > 84 && y < 100 && Squares(x, z) < cup_radius * cup_radius;
  return base || ((pillar || hub) && from_hub > 16 * 16) || cup;
}

struct View {
  const wchar_t* word;
  // Where the model's x, y and z go: right, up, towards the viewer.
  std::array<std::array<double, 3>, 3> rows;
  double low[2], high[2];  // what the part takes to the right and up, in mm
};

const double kH = std::sqrt(0.5), kS = 1 / std::sqrt(6), kT = 1 / std::sqrt(3);
// The base reaches furthest to all four sides: 60 √½ + 25 √⅓ from the middle of its lower side, and at its
// upper side 12 √⅙ more to the right and up.
const double kReach = 60 * kH + 25 * kT;

const View kViews[] = {
    {L"front", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}, {-60, 0}, {60, 100}},
    {L"top", {{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}}, {-25, -60}, {25, 60}},
    {L"right", {{{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}}, {0, -25}, {100, 25}},
    {L"home",
     {{{kH, -kH, 0}, {kS, kS, 2 * kS}, {-kT, -kT, kT}}},
     {-kReach, -kReach},
     {kReach + 12 * kS, kReach + 12 * kS}},
};

using Mask = std::vector<char>;  // 1 where the part is, rows from the top

// Looks through the middle of each pixel, a millimetre a step.
Mask Predicted(const View& view) {
  // 5 % of the picture stay free at each side.
  const double across = view.high[0] - view.low[0], up = view.high[1] - view.low[1];
  const double scale = std::min(0.9 * kWidth / across, 0.9 * kHeight / up);  // pixels per millimetre
  Mask mask;
  for (int j = 0; j < kHeight; ++j)
    for (int i = 0; i < kWidth; ++i) {
      const double right = (view.low[0] + view.high[0]) / 2 + (i + 0.5 - kWidth / 2) / scale;
      const double above = (view.low[1] + view.high[1]) / 2 - (j + 0.5 - kHeight / 2) / scale;
      bool hit = false;
      for (double depth = -70; depth < 110 && !hit; depth += 1) {
        double point[3];
        for (std::size_t axis = 0; axis < 3; ++axis)
          point[axis] = right * view.rows[axis][0] + above * view.rows[axis][1] + depth * view.rows[axis][2];
        hit = IsMaterial(point[0], point[1], point[2]);
      }
      mask.push_back(hit);
    }
  return mask;
}

// What isn't background, which is the same along a row and fills the left margin. Empty for any other
// picture.
Mask Drawn(const std::string& bytes) {
  constexpr std::size_t kHead = 54, kRow = 3 * kWidth;
  std::int32_t size[2] = {};
  if (bytes.size() != kHead + kRow * kHeight) return {};
  std::memcpy(size, bytes.data() + 18, sizeof size);
  if (size[0] != kWidth || size[1] != kHeight) return {};
  Mask mask;
  for (int j = kHeight - 1; j >= 0; --j) {
    const char* const row = bytes.data() + kHead + kRow * static_cast<std::size_t>(j);
    for (int i = 0; i < kWidth; ++i) mask.push_back(std::memcmp(row, row + 3 * i, 3) != 0);
  }
  return mask;
}

// Whether the part's outline passes within two pixels, where lines are drawn and colours are mixed.
bool IsNearOutline(const Mask& mask, int x, int y) {
  for (int j = std::max(y - 2, 0); j <= std::min(y + 2, kHeight - 1); ++j)
    for (int i = std::max(x - 2, 0); i <= std::min(x + 2, kWidth - 1); ++i)
      if (mask[j * kWidth + i] != mask[y * kWidth + x]) return true;
  return false;
}

class Silhouette : public OperationTest {
 protected:
  // The job of the sample up to where it is written to files.
  void BuildSample() {
    std::ifstream job(VEK_SAMPLE_JOB);
    ASSERT_TRUE(job.is_open());
    for (const auto& step : nlohmann::json::parse(job)) {
      const std::string name = step.at(0);
      if (name == "api_document_save_as") return;
      Succeed(DecodeUtf8(name), DecodeUtf8(step.at(1).dump()));
    }
  }
};

TEST_F(Silhouette, OfTheSampleIsThatOfItsGeometryInEachView) {
  BuildSample();
  for (const View& view : kViews) {
    const std::wstring file = Format(L"%s.bmp", view.word);
    Succeed(L"api_export_screenshot",
            Format(LR"({"output_path":"%s","view":"%s","width_px":%d,"height_px":%d})", JsonPath(file),
                   view.word, kWidth, kHeight));
    const Mask drawn = Drawn(Bytes(file)), predicted = Predicted(view);
    ASSERT_EQ(drawn.size(), predicted.size());
    int wrong = 0, inside = 0, outside = 0;
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x) {
        if (IsNearOutline(predicted, x, y)) continue;
        const char expected = predicted[y * kWidth + x];
        wrong += drawn[y * kWidth + x] != expected;
        ++(expected ? inside : outside);
      }
    EXPECT_EQ(wrong, 0) << EncodeUtf8(view.word);
    // The comparison leaves little out, and the part takes its share of the picture.
    EXPECT_GT(inside + outside, kWidth * kHeight * 4 / 5) << EncodeUtf8(view.word);
    EXPECT_GT(inside, kWidth * kHeight / 6) << EncodeUtf8(view.word);
  }
}

}  // namespace
}  // namespace vek::support

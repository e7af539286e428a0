#include <gtest/gtest.h>

#include <cmath>

#include "tests/kernel/scenes.h"

namespace bench::kernel::testing {
namespace {

// Clashes as one line of text each, with the volume apart.
struct Found {
  std::vector<std::string> pairs;
  std::vector<double> volumes;
};

Found Clashes(const std::vector<json>& models) {
  const json answer = Ask("interfere", models);
  EXPECT_TRUE(answer.contains("ok")) << answer;
  Found found;
  for (const json& clash : answer["ok"]["clashes"]) {
    found.pairs.push_back(clash["first"].dump() + clash["second"].dump());
    found.volumes.push_back(clash["volume"]);
  }
  return found;
}

// 20 · 30 · 10 with a corner in the origin.
json Board() {
  return PartOf({Extrude(1, Front(), Rectangle(1, 0, 0, 20, 30))});
}
json Cube() {
  return PartOf({Extrude(1, Front(), Rectangle(1, 0, 0, 10, 10))});
}
json Pin(double radius) {
  return PartOf({Extrude(1, Front(), {Circle(1, 10, 10, radius)})});
}
TEST(Interfere, TellsTheRoomThatTwoBodiesShare) {
  const struct {
    const char* what;
    json first, second;
    std::vector<double> place;
    double volume;  // 0: no clash
  } kCases[] = {
      {"corners in each other: 5 · 10 · 6", Board(), Board(), Shift(15, 20, 4), 300},
      {"one at the place of the other", Board(), Board(), Shift(0, 0, 0), 6000},
      {"one inside the other", Board(),
       PartOf({Extrude(1, FrontAt(4), Rectangle(1, 5, 5, 2, 3), {.depth = 1})}), Shift(0, 0, 0), 6},
      // A corner of the turned square stands at (5, 5), and what is below y = 10 is half of 10 · 5.
      {"slanted", Cube(), Cube(), Turned(45, 5, 5, 0), 250},
      {"pin too thick for its hole: (16 - 9) π · 10", PartOf(Plate()), Pin(4), Shift(0, 0, 0), 70 * kPi},
      {"pin that fills its hole", PartOf(Plate()), Pin(3), Shift(0, 0, 0), 0},
      {"face to face", Board(), Board(), Shift(20, 0, 0), 0},
      {"edge to edge", Board(), Board(), Shift(20, 30, 0), 0},
      {"apart", Board(), Board(), Shift(21, 0, 0), 0},
      // The turned square's corner stands at (12, 9), at x = 10 it begins at y = 11; its box begins at (4.9,
      // 9).
      {"apart though their boxes aren't", Cube(), Cube(), Turned(45, 12, 9, 0), 0},
  };
  for (const auto& c : kCases) {
    const Found found =
        Clashes({c.first, c.second, AssemblyOf({Placed(4, 0, Shift(0, 0, 0)), Placed(7, 1, c.place)})});
    ASSERT_EQ(found.pairs, c.volume > 0 ? std::vector<std::string>{"[4][7]"} : std::vector<std::string>{})
        << c.what;
    if (c.volume > 0) ExpectClose(found.volumes[0], c.volume, c.what);
  }
}

TEST(Interfere, OfSlantedBodiesThatTouchIsNone) {
  // The second stands on the first one's right side, both turned about the origin.
  for (const double degrees : {10.0, 30.0, 77.0}) {
    const double c = std::cos(degrees * kPi / 180), s = std::sin(degrees * kPi / 180);
    const Found found = Clashes({Board(), AssemblyOf({Placed(1, 0, Turned(degrees, 0, 0, 0)),
                                                      Placed(2, 0, Turned(degrees, 20 * c, 20 * s, 3))})});
    EXPECT_TRUE(found.pairs.empty()) << degrees;
  }
}

TEST(Interfere, LooksThroughAllLevelsAndOrdersByPath) {
  // The cubes of one sub-assembly stand at x = 0 and 8, those of the other at 16 and 24: 2 · 10 · 10 in
  // common wherever two of them follow each other.
  const json pair = AssemblyOf({Placed(6, 0, Shift(8, 0, 0)), Placed(5, 0, Shift(0, 0, 0))});
  const Found found =
      Clashes({Cube(), pair, AssemblyOf({Placed(9, 1, Shift(16, 0, 0)), Placed(3, 1, Shift(0, 0, 0))})});
  EXPECT_EQ(found.pairs, (std::vector<std::string>{"[3,5][3,6]", "[3,6][9,5]", "[9,5][9,6]"}));
  for (const double volume : found.volumes) ExpectClose(volume, 200);
}

TEST(Interfere, OfAPartOrOfNothingIsNone) {
  EXPECT_TRUE(Clashes({Board()}).pairs.empty());
  EXPECT_TRUE(Clashes({PartOf({}), AssemblyOf({Placed(1, 0, Shift(0, 0, 0)), Placed(2, 0, Shift(0, 0, 0))})})
                  .pairs.empty());
}

}  // namespace
}  // namespace bench::kernel::testing

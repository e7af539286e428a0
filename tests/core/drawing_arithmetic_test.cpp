#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "addin/ops/drawing/cutting_plane.h"
#include "addin/ops/drawing/drawing_names.h"
#include "addin/ops/drawing/view_placement.h"

namespace vek::drawing {
namespace {

constexpr double kEverywhere = 10'000;

void ExpectAt(const SheetPoint& point, const SheetPoint& expected) {
  EXPECT_DOUBLE_EQ(point.x, expected.x);
  EXPECT_DOUBLE_EQ(point.y, expected.y);
}

TEST(ViewDirections, LeadFromTheCentreByTheGap) {
  const struct {
    const wchar_t* word;
    SheetPoint expected;
  } cases[] = {{L"top", {10, 120}},
               {L"bottom", {10, -80}},
               {L"left", {-90, 20}},
               {L"right", {110, 20}},
               {L"iso", {110, 120}},
               {L" IsoMetric\t", {110, 120}},
               {L"behind the moon", {110, 20}}};
  for (const auto& [word, expected] : cases) ExpectAt(Toward(word, {10, 20}, 100), expected);
}

TEST(ViewPlacement, TriesEightPlacesOnEachOfFourRingsAndOneMore) {
  // Centre (100, 150), half sizes 65 and 30; the outermost ring lies 220 off.
  const auto places = PlacementCandidates({50, 150, 100, 200}, 65, 30);
  ASSERT_EQ(places.size(), 33u);
  const double right = 150 + 40 + 65, left = 50 - 40 - 65, top = 200 + 40 + 30, bottom = 100 - 40 - 30;
  const SheetPoint first_ring[] = {{right, 150},  {right, top}, {100, top},  {right, bottom},
                                   {100, bottom}, {left, 150},  {left, top}, {left, bottom}};
  for (int i = 0; i < 8; ++i) ExpectAt(places[i], first_ring[i]);
  ExpectAt(places[8], {150 + 80 + 65, 150});
  ExpectAt(places[16], {150 + 140 + 65, 150});
  ExpectAt(places[31], {50 - 220 - 65, 100 - 220 - 30});
  ExpectAt(places[32], {100 + 150, 150 + 100});
}

TEST(ViewPlacement, TakesTheFirstPlaceThatKeepsItsDistance) {
  const ViewRect parent{50, 150, 100, 200};
  const struct {
    const char* what;
    double half;
    std::vector<ViewRect> others;
    SheetPoint expected;
    bool clear;
  } cases[] = {
      {"only the parent", 65, {}, {255, 150}, true},
      {"a neighbour 15 off, right of 255 + 65", 65, {{335, 400, 100, 200}}, {255, 150}, true},
      // From 240 on the new one is clear of 200 + 15.
      {"a neighbour nearer than that", 65, {{334.9, 400, 100, 200}}, {255, 305}, true},
      {"a column right of the parent", 65, {{200, 300, -kEverywhere, kEverywhere}}, {100, 305}, true},
      // The rings' places lie at 192 and 232, and at 292 and 372; the last one spans 248 to 252.
      {"columns beside the last place",
       2,
       {{-kEverywhere, 230, -kEverywhere, kEverywhere}, {280, kEverywhere, -kEverywhere, kEverywhere}},
       {250, 250},
       true},
      {"a full sheet", 65, {{-kEverywhere, kEverywhere, -kEverywhere, kEverywhere}}, {255, 150}, false},
      {"a size that is none", 1, {}, {150 + 40 + 60, 150}, true},
      {"a size that is no number", std::nan(""), {}, {150 + 40 + 60, 150}, true},
  };
  for (const auto& [what, half, others, expected, clear] : cases) {
    SCOPED_TRACE(what);
    std::vector<ViewRect> obstacles{parent};
    obstacles.insert(obstacles.end(), others.begin(), others.end());
    const Placement placement = PlaceAround(parent, half, half, obstacles);
    EXPECT_EQ(placement.clear, clear);
    ExpectAt(placement.point, expected);
  }
  EXPECT_TRUE(PlaceAround(parent, 65, 65, {}).clear) << "nothing is in the way";
}

TEST(ViewRects, HoldTheirEdgesAndNoPointWithoutNumbers) {
  const ViewRect rect{0, 10, 0, 20};
  EXPECT_TRUE(rect.Holds({0, 20}));
  EXPECT_FALSE(rect.Holds({10.1, 5}));
  EXPECT_FALSE(rect.Holds({5, -0.1}));
  EXPECT_FALSE(rect.Holds({std::nan(""), 5}));
}

TEST(CuttingPlanes, FollowTheLinesDirectionAndItsDistanceFromTheCentre) {
  const SheetPoint centre{100, 150};
  const struct {
    CuttingLine line;
    std::wstring plane;
    double offset;
  } cases[] = {
      {{0, 0, 10, 0}, L"TOP", -150},         {{10, 170, 0, 170}, L"TOP", 20},
      {{0, 150, 10, 158}, L"TOP", 4},         // 10 is 1.25 times 8; the middle lies at 154
      {{90, 0, 98, 10}, L"RIGHT", -6},        // the same upright; the middle lies at 94
      {{120, 200, 120, -200}, L"RIGHT", 20},  //
      {{0, 0, 10, 9}, L"FRONT", 0},           // neither is 1.25 times the other
      {{5, 5, 5, 5}, L"TOP", -145},
  };
  for (const auto& [line, plane, offset] : cases) {
    EXPECT_EQ(CuttingPlane(line), plane);
    EXPECT_DOUBLE_EQ(SheetOffset(line, centre), offset);
  }
  for (const double scale : {0.0, -2.0, 1e-9, std::nan(""), double{INFINITY}})
    EXPECT_EQ(DivisibleScale(scale), 1) << scale;
  EXPECT_EQ(DivisibleScale(0.5), 0.5);
}

TEST(DrawingNames, MoveOnFromTakenOnesWithinOneTick) {
  std::set<std::wstring> taken;
  const auto is_taken = [&taken](const std::wstring& name) { return taken.contains(name); };
  for (const wchar_t* expected : {L"VEK_DRW_4294967295", L"VEK_DRW_0", L"VEK_DRW_1"}) {
    EXPECT_EQ(FreeDrawingName(4294967295u, is_taken), expected);
    taken.insert(expected);
  }
  EXPECT_EQ(FreeDrawingName(100, [](const std::wstring&) { return true; }), L"VEK_DRW_124");
}

TEST(SectionNames, AreLettersThenNumbersThenTheClock) {
  std::vector<std::wstring> given;
  const auto is_taken = [&given](const std::wstring& name) { return std::ranges::count(given, name) > 0; };
  while (given.size() < 200) given.push_back(FreeSectionName(0, is_taken));
  EXPECT_EQ(given[0], L"A");
  EXPECT_EQ(given[25], L"Z");
  EXPECT_EQ(given[26], L"S1");
  EXPECT_EQ(given[199], L"S174");
  EXPECT_EQ(FreeSectionName(1'234'567, is_taken), L"S34567");
}

}  // namespace
}  // namespace vek::drawing

// What a plotted sheet shows. The block is 40 × 20 × 10 with its corner in the origin and a hole of radius 3
// at (10, 10) along z; the sheet is 420 × 297, and SVG counts y from above: 297 - y.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "bench/host/drawing/views.h"
#include "bench/host/plot/hatching.h"
#include "bench/host/plot/sheet_plot.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using testing::HasSubstr;
using testing::Not;

class PlotTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    if (HasFatalFailure()) return;
    Extrude(*part_, Plate(), {});
    Extrude(*part_, Circle(10, 10, 3), {.cut = true});
    auto model = std::make_unique<Model>();
    model->type = PRO_MDL_DRAWING;
    model->name = L"SHEET<1>";
    model->drawing = std::make_unique<bench::Drawing>();
    model->drawing->sheets = {{1, L"A3", 420, 297, 10, 1}, {2, L"A4", 297, 210, 10, 1}};
    model->drawing->solids = {{part_, L"PART", PRO_MDL_PART}};
    sheet_ = &host().session.Add(std::move(model));
  }

  // From the front at scale 2, with the middle of the block at (100, 150).
  DrawingView& Front() {
    DrawingView* view = nullptr;
    EXPECT_EQ(AddGeneralView(*sheet_, {part_, 1, {100, 150}, 2, kNoMove}, view), PRO_TK_NO_ERROR);
    return *view;
  }

  // Through the hole's middle, level on the front view, shown above it.
  DrawingView& Section(const DrawingView& front) {
    EXPECT_EQ(OffsetPlane(*part_, PlaneOf(*part_, L"TOP"), 10, L"MIDDLE").status, PRO_TK_NO_ERROR);
    int id = 0;
    EXPECT_EQ(AddCrossSection(*part_, L"A", PlaneOf(*part_, L"MIDDLE").id, id), PRO_TK_NO_ERROR);
    DrawingView* view = nullptr;
    EXPECT_EQ(AddProjectedView(*sheet_, front, {front.center[0], front.center[1] + 80}, view),
              PRO_TK_NO_ERROR);
    EXPECT_EQ(SetSection(*sheet_, *view, L"A", &front), PRO_TK_NO_ERROR);
    return *view;
  }

  DrawingView& Detail(const DrawingView& parent, double x, double y, double radius) {
    DetailRequest request{{x, y}, {}, {300, 100}};
    for (int i = 0; i < 16; ++i) {
      const double angle = i * std::numbers::pi / 8;
      request.spline.push_back({x + radius * std::cos(angle), y + radius * std::sin(angle)});
    }
    DrawingView* view = nullptr;
    EXPECT_EQ(AddDetailView(*sheet_, parent, request, view), PRO_TK_NO_ERROR);
    return *view;
  }

  Model* sheet_ = nullptr;
};

double LengthOf(const std::vector<Polyline>& lines) {
  double length = 0;
  for (const Polyline& line : lines) length += std::hypot(line[1][0] - line[0][0], line[1][1] - line[0][1]);
  return length;
}

TEST(Hatching, LeavesHolesOut) {
  // Across the lines the square reaches to 10/√2 = 7.071 on both sides, so lines lie at 0, ±3 and ±6. At a
  // distance h from its middle one is 2 (7.071 - h) long, less 2 (2.828 - h) in the hole of 4 by 4.
  const Polyline square{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, hole{{3, 3}, {7, 3}, {7, 7}, {3, 7}};
  const double half = 10 / std::numbers::sqrt2, half_hole = 4 / std::numbers::sqrt2;
  for (const int body : {0, 1}) {
    const auto lines = Hatched({square, hole}, body);
    // The other body's lines run across the square's other diagonal, which lies 7.071 from the origin: at 3,
    // 6, 9 and 12, that is -4.071, -1.071, 1.929 and 4.929 from its middle.
    const std::vector<double> offsets = body == 0
                                            ? std::vector<double>{0, 3, 3, 6, 6}
                                            : std::vector<double>{half - 3, half - 6, 9 - half, 12 - half};
    double expected = 0;
    for (const double offset : offsets)
      expected += 2 * (half - offset) - 2 * std::max(0.0, half_hole - offset);
    EXPECT_NEAR(LengthOf(lines), expected, 1e-9) << body;
    EXPECT_EQ(lines.size(), 6u);  // one of five is split by the hole, or two of four
  }
}

TEST_F(PlotTest, SectionsAndDetailsAreMarkedOnTheirParents) {
  DrawingView& front = Front();
  Section(front);
  Detail(front, 70, 140, 8);
  const std::string plot = PlotSheet(*sheet_);
  // The cut at y = 10 lies at 150, that is 147 from above; its line ends 8 past the view, where the arrows
  // look down as the reader of the view above does.
  EXPECT_THAT(plot, HasSubstr(R"(class="frame" d="M148 147L142 147")"));
  EXPECT_THAT(plot, HasSubstr(R"(class="arrow" d="M148 147L148.5 144L147.5 144Z")"));
  EXPECT_THAT(plot, HasSubstr(">SECTION A-A<"));
  // The letter A is the section's.
  EXPECT_THAT(plot, HasSubstr(">DETAIL B  SCALE 4:1<"));
  EXPECT_THAT(plot, HasSubstr("url(#within1)"));
  // The section at scale 2 and centre (100, 230) is cut over 2 · 40 but for the hole's 2 · 6; no dashes
  // there.
  EXPECT_THAT(plot, Not(HasSubstr(R"(class="hidden")")));
}

TEST_F(PlotTest, DimensionsAreDrawnWhereTheyCanBeSeenAndToldElsewhere) {
  DrawingView& front = Front();
  DrawingView* top = nullptr;
  ASSERT_EQ(AddProjectedView(*sheet_, front, {100, 230}, top), PRO_TK_NO_ERROR);
  ASSERT_EQ(ShowDimensions(*sheet_, *top), PRO_TK_NO_ERROR);
  std::string plot = PlotSheet(*sheet_);
  // Both depths measure from z = 0 to 10 and are drawn as one; none is left to be told.
  const auto first = plot.find(">10<");
  ASSERT_NE(first, std::string::npos);
  EXPECT_EQ(plot.find(">10<", first + 1), std::string::npos);
  EXPECT_THAT(plot, Not(HasSubstr("DIMENSIONS OF")));
  ASSERT_EQ(ShowDimensions(*sheet_, front), PRO_TK_NO_ERROR);
  plot = PlotSheet(*sheet_);
  EXPECT_THAT(plot, HasSubstr(">d0 = 10<"));
  EXPECT_THAT(plot, HasSubstr(">d1 = 10<"));
}

TEST_F(PlotTest, WhatCantBeProjectedIsComplainedAbout) {
  DrawingView& front = Front();
  DrawingView& section = Section(front);
  section.section = L"GONE";
  EXPECT_THAT(PlotSheet(*sheet_), Not(HasSubstr("SECTION")));
  EXPECT_TRUE(Complained("the view new_view_2 is left out of the plot: its cross-section has no plane"));
  sheet_->drawing->solids[0].model = nullptr;
  EXPECT_THAT(PlotSheet(*sheet_), Not(HasSubstr("60 167")));
  EXPECT_TRUE(Complained("the view new_view_1 is left out of the plot: its model is not in session"));
}

}  // namespace
}  // namespace bench

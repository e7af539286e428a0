// The revolve operation: solids, arguments, element tree; and its axis: which line of a sketch becomes it,
// when one is added, and when the revolve gives up.
#include <cmath>
#include <limits>
#include <numbers>
#include <tuple>

#include "addin/ops/feature/revolve_centerline.h"
#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

using std::numbers::pi;
using testing::ElementsAre;

constexpr const wchar_t* kRevolve = L"api_feature_revolve";

// The ring of all revolves here: 2 ≤ s ≤ 5 and 0 ≤ t ≤ 3 in the sketch, about the axis s = 0 upwards.
constexpr double kInner = 2, kOuter = 5, kHeight = 3;

// The ring over an angle from the plane. By Pappus its volume is angle × (R² - r²)/2 × h; the radius
// integrates to (R³ - r³)/3, and the cosine and sine of the angle to its sine and 1 - its cosine.
// Right-handed about t, s turns to -w; `side` is -1 then and 1 the other way.
SolidSum Ring(double angle_deg, int side) {
  const double angle = angle_deg * pi / 180;
  const double radial = (std::pow(kOuter, 3) - std::pow(kInner, 3)) / 3;
  SolidSum sum;
  sum.volume = angle / 2 * (kOuter * kOuter - kInner * kInner) * kHeight;
  sum.moment = {kHeight * radial * std::sin(angle), sum.volume * kHeight / 2,
                side * kHeight * radial * (1 - std::cos(angle))};
  return sum;
}

// Over a quarter, s reaches from 0 to R and w from 0 to R on its side.
constexpr bench::Box kQuarterDown{{0, 0, -kOuter}, {kOuter, kHeight, 0}};
constexpr bench::Box kQuarterUp{{0, 0, 0}, {kOuter, kHeight, kOuter}};

class RevolveOperation : public FeatureTest {
 protected:
  void DrawRing(const std::wstring& sketch, const SketchFrame& frame, int up = 1) {
    Rectangle(sketch, frame.plane, kInner, 0, kOuter, kHeight);
    DrawAxis(sketch, up);
  }
};

TEST_F(RevolveOperation, TurnsTheSectionAboutItsCenterline) {
  const std::tuple<double, const wchar_t*, int, bench::Box> cases[] = {
      {90, L"", -1, kQuarterDown},
      {90, L"Negative", 1, kQuarterUp},
      {180, L"NEGATIVE", 1, {{-kOuter, 0, 0}, {kOuter, kHeight, kOuter}}},
      {360, L"", -1, {{-kOuter, 0, -kOuter}, {kOuter, kHeight, kOuter}}},
      {360, L"negative", 1, {{-kOuter, 0, -kOuter}, {kOuter, kHeight, kOuter}}}};
  for (const SketchFrame& frame : {kFront, kTop, kRight}) {
    const std::wstring sketch = frame.plane + std::wstring(L"_RING");
    DrawRing(sketch, frame);
    for (const auto& [angle, direction, side, outline] : cases) {
      SCOPED_TRACE(EncodeUtf8(Format(L"%s %g %s", sketch, angle, direction)));
      const std::wstring name = Create(
          kRevolve,
          Format(LR"({"sketch_name":"%s","angle_deg":%g,"direction":"%s"})", sketch, angle, direction));
      ExpectSolid(frame, Ring(angle, side), outline);
      Delete(name);
    }
  }
}

TEST_F(RevolveOperation, AnAxisDrawnDownwardsTurnsTheOtherWayAndInchesAreTheSameMillimetres) {
  Current().length_unit = bench::LengthUnit::kInch;
  DrawRing(L"S", kFront, -1);
  Succeed(kRevolve, LR"({"sketch_name":"S","angle_deg":90})");
  ExpectSolid(kFront, Ring(90, 1), kQuarterUp);
}

TEST_F(RevolveOperation, AnswersAndHistoryAndTreeFollowTheArguments) {
  DrawRing(L"S", kFront);
  ClearHistory();
  const auto result = Run(kRevolve, LR"({"sketch_name":"s","angle_deg":22.75})");
  ExpectCreated(result, L"Revolve 1", L"Revolve 'Revolve 1' created from 's' (22.8 deg).");
  EXPECT_EQ(TreeOf(FeatureNamed(L"Revolve 1")),
            "386(387=917 388=2 1956=917 2023=-1 3176=0 447 436=-1 3280=1 "
            "6(437(439=262144) 438(440=4194304 442=22.75)))");
  Succeed(kRevolve, LR"({"sketch_name":"S"})");
  Succeed(kRevolve, LR"({"sketch_name":"S","angle_deg":"12.5","direction":"NEGATIVE","operation":"remove"})");
  EXPECT_TRUE(TreeOf(FeatureNamed(L"Revolve_1")).ends_with(" 442=360)))"));
  EXPECT_EQ(TreeOf(FeatureNamed(L"Revolve 2")),
            "386(387=917 388=2 1956=917 2023=916 3176=0 447 436=1 3280=1 "
            "6(437(439=262144) 438(440=4194304 442=12.5)))");
}

TEST_F(RevolveOperation, ArgumentsAreChecked) {
  DrawRing(L"S", kFront);
  const wchar_t* const angle = L"'angle_deg' must be greater than 0.";
  ExpectRefusals({{kRevolve, LR"({"sketch_name":"?","angle_deg":0,"operation":"odd"})", angle},
                  {kRevolve, LR"({"sketch_name":"?","angle_deg":nan})", angle},
                  {kRevolve, LR"({"sketch_name":"?"})",
                   L"Sketched curve feature '?' not found. Create/commit it with api_sketch_* first."},
                  // An angle without an end passes here and is the host's to refuse.
                  {kRevolve, LR"({"sketch_name":"S","angle_deg":1e999})", L"Failed to set revolve angle."}});
}

TEST_F(RevolveOperation, WhatTheHostRefusesLeavesTheModelAsItWas) {
  DrawRing(L"S", kFront);
  const wchar_t* const message = L"Creo could not create the feature from sketch 'S' (status=-1, errors=1).";
  ExpectRefusals({{kRevolve, LR"({"sketch_name":"S","angle_deg":400})", message},
                  {kRevolve, LR"({"sketch_name":"S","operation":"cut"})", message}});
}

struct Segment {
  double x1, y1, x2, y2;
};

class RevolveAxis : public FeatureTest {
 protected:
  // A new sketch, which the helpers below speak of.
  void DrawLines(const std::vector<Segment>& lines, const std::vector<Segment>& construction) {
    sketch_ = Format(L"S%d", ++sketches_);
    CreateSketch(sketch_, L"XY");
    const auto add = [this](const std::vector<Segment>& segments, const wchar_t* kind) {
      for (const auto& [x1, y1, x2, y2] : segments)
        Draw(L"api_sketch_polyline", sketch_,
             Format(LR"("points":[[%g,%g],[%g,%g]],"construction":%s)", x1, y1, x2, y2, kind));
    };
    add(lines, L"false");
    add(construction, L"true");
  }

  CreoMcpOperationResult Prepare(const std::wstring& arguments) {
    feature::FeatureInfo sketch;
    EXPECT_TRUE(feature::FeatureLookup(bench::Handle(Current()), sketch_, sketch, true).success);
    return feature::PrepareRevolveCenterline(sketch, arguments);
  }

  std::vector<bench::SectionEntity> EntitiesOf(Pro2dEntType type) {
    std::vector<bench::SectionEntity> entities;
    for (const auto& [id, entity] : FeatureNamed(sketch_)->section->entities)
      if (entity.type == type) entities.push_back(entity);
    return entities;
  }
  std::size_t CountOf(Pro2dEntType type) { return EntitiesOf(type).size(); }

  void ExpectAxis(const Segment& segment) {
    const auto axes = EntitiesOf(PRO_2D_CENTER_LINE);
    ASSERT_EQ(axes.size(), 1u);
    EXPECT_THAT(axes[0].first, ElementsAre(segment.x1, segment.y1));
    EXPECT_THAT(axes[0].second, ElementsAre(segment.x2, segment.y2));
  }

  std::wstring sketch_;
  int sketches_ = 0;
};

constexpr Segment kVertical{0, -5, 0, 5};
constexpr Segment kSecondVertical{-1, -5, -1, 5};
constexpr Segment kHorizontal{-5, -8, 5, -8};

TEST_F(RevolveAxis, ALineIsPromotedByItsKindItsDirectionOrItsNumber) {
  const std::tuple<std::vector<Segment>, std::vector<Segment>, const wchar_t*, Segment> cases[] = {
      // Nothing is asked for: the first construction line.
      {{kHorizontal}, {kVertical, kHorizontal}, L"{}", kVertical},
      // A word or a direction looks for a line that lies so.
      {{}, {kVertical, kHorizontal}, LR"({"axis":" x "})", kHorizontal},
      {{}, {kHorizontal, kVertical}, LR"({"axis":"Y"})", kVertical},
      {{}, {kHorizontal, kVertical}, LR"({"axis_direction":[0,0,-2]})", kVertical},
      {{kHorizontal}, {kVertical, kSecondVertical}, LR"({"axis_direction":[1,0]})", kVertical},
      // By number, among the construction lines; with no direction the first of them already fits.
      {{}, {kVertical, kSecondVertical}, LR"({"axis":"A:2","axis_direction":[1,0]})", kSecondVertical},
      // By number, among the lines, when none is a construction line.
      {{kHorizontal, kVertical}, {}, LR"({"axis":"L:2"})", kVertical},
      {{kHorizontal, kVertical}, {kSecondVertical}, LR"({"axis":"L:2"})", kSecondVertical}};
  for (const auto& [lines, construction, arguments, promoted] : cases) {
    SCOPED_TRACE(EncodeUtf8(arguments));
    DrawLines(lines, construction);
    const std::size_t before = CountOf(PRO_2D_LINE);
    const auto result = Prepare(arguments);
    EXPECT_TRUE(result.success) << EncodeUtf8(result.message);
    ExpectAxis(promoted);
    EXPECT_EQ(CountOf(PRO_2D_LINE), before - 1);
  }
}

TEST_F(RevolveAxis, ASketchWithoutALineIsGivenAnAxisThatIsAskedFor) {
  constexpr Segment kUp{0, -50, 0, 50};
  constexpr Segment kAcross{-50, 0, 50, 0};
  // In model units, not millimetres.
  Current().length_unit = bench::LengthUnit::kInch;
  // A direction counts beside every word but X.
  const std::tuple<const wchar_t*, Segment> cases[] = {{LR"({"axis":"X","axis_direction":[0,1]})", kAcross},
                                                       {LR"({"axis_direction":[1,1]})", kUp},
                                                       {LR"({"axis_direction":[-2,1,-1]})", kAcross},
                                                       {LR"({"axis_direction":[1,0,-2]})", kUp},
                                                       {LR"({"axis":"?","axis_direction":[1,0]})", kAcross}};
  for (const auto& [arguments, injected] : cases) {
    SCOPED_TRACE(EncodeUtf8(arguments));
    DrawLines({}, {});
    const auto result = Prepare(arguments);
    EXPECT_TRUE(result.success) << EncodeUtf8(result.message);
    ExpectAxis(injected);
  }
  EXPECT_EQ(CountCaptured(L"Feature Revolve: injecting centerline from axis / axis_direction"), 5);
}

TEST_F(RevolveAxis, ASketchWithACenterlineIsLeftAlone) {
  DrawLines({}, {kHorizontal});
  DrawAxis(sketch_);
  const auto mark = host().journal.Mark();
  EXPECT_TRUE(Prepare(LR"({"axis":"X","axis_direction":[1,0]})").success);
  ExpectAxis(kVertical);
  EXPECT_EQ(CountOf(PRO_2D_LINE), 1u);
  EXPECT_TRUE(CallsSince(mark, {"ProSectionRegenerate", "ProFeatureWithoptionsRedefine"}).empty());
  // So is one without a construction line when no axis is asked for.
  DrawLines({kVertical}, {});
  EXPECT_EQ(EncodeUtf8(Prepare(LR"({"axis_direction":[1]})").message),
            "Revolve requires a sketch centerline axis. Draw the axis with api_sketch_line_two_points using "
            "\"construction\": true or \"centerline\": true (Creo maps both to a centerline).");
  EXPECT_EQ(CountOf(PRO_2D_LINE), 1u);
}

TEST_F(RevolveAxis, APromotionThatFailsGivesWayToAnAddedAxis) {
  for (const char* call : {"ProSectionEntityDelete", "ProSectionEntityAdd"}) {
    DrawLines({}, {kHorizontal});
    faults().Fail(call, PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Prepare(LR"({"axis":"Y"})").success) << call;
    ExpectAxis({0, -50, 0, 50});
  }
}

TEST_F(RevolveAxis, ARevolvePreparesItsAxisAndKeepsItWhenItFails) {
  DrawLines({}, {kVertical});
  DrawCircle(sketch_);
  // The section holds, the axis doesn't: a turn of 400 degrees is the host's to refuse.
  Run(kRevolve, Format(LR"({"sketch_name":"%s","angle_deg":400})", sketch_));
  ExpectAxis(kVertical);
  // The line has the id behind that of the point that each sketch starts with.
  EXPECT_EQ(CountCaptured(L"Feature Revolve: promoting entity id=2 to centerline"), 1);
  EXPECT_EQ(CountCaptured(L"Feature Revolve: section regen after centerline status=0 errCount=0"), 1);
  Succeed(kRevolve, Format(LR"({"sketch_name":"%s"})", sketch_));
  // A torus by Pappus: 2π × 4 round, and π across.
  EXPECT_NEAR(Volume(), 8 * pi * pi, 1e-4);
}

TEST(AxisMatchesLine, HoldsALineAgainstAWordOrADirection) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  const std::tuple<double, double, const wchar_t*, std::vector<double>, bool> cases[] = {
      {kNan, 0, L"", {}, false},
      {1, 2, L"Y", {}, true},
      {2, 1, L"Y", {}, false},
      {1, 2, L"X", {1, 0}, false},
      {1, 2, L"", {0, 0}, true},
      {1, 2, L"", {kNan, 0}, true},
      {1, 1, L"", {1, -1, 1}, false},
      {1, 1, L"", {1, -1, 2}, true},
      // 0.7 is the cosine of 45.6 degrees: a line at 45 matches, one at 46 doesn't.
      {1, 1, L"", {0, -4}, true},
      {1.0355, 1, L"", {0, 1}, false}};
  for (const auto& [x, y, axis, direction, matches] : cases)
    EXPECT_EQ(feature::AxisMatchesLine(0, 0, x, y, axis, direction), matches) << x << ' ' << y;
}

}  // namespace
}  // namespace vek::support

// The revolve operation: solids, arguments, element tree, failures.
#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

using std::numbers::pi;

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
  const struct {
    double angle;
    const wchar_t* direction;
    int side;
    bench::Box outline;
  } cases[] = {
      {90, L"", -1, kQuarterDown},
      {90, L"Negative", 1, kQuarterUp},
      {90, L"positive", -1, kQuarterDown},
      {180, L"NEGATIVE", 1, {{-kOuter, 0, 0}, {kOuter, kHeight, kOuter}}},
      {360, L"", -1, {{-kOuter, 0, -kOuter}, {kOuter, kHeight, kOuter}}},
      {360, L"negative", 1, {{-kOuter, 0, -kOuter}, {kOuter, kHeight, kOuter}}},
  };
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

TEST_F(RevolveOperation, AnAxisDrawnDownwardsTurnsTheOtherWay) {
  DrawRing(L"S", kFront, -1);
  Succeed(kRevolve, LR"({"sketch_name":"S","angle_deg":90})");
  ExpectSolid(kFront, Ring(90, 1), kQuarterUp);
}

TEST_F(RevolveOperation, ACircleMakesATorus) {
  NewSketch(L"S", L"FRONT");
  DrawCircle(L"S");
  DrawAxis(L"S");
  Succeed(kRevolve, LR"({"sketch_name":"S"})");
  // Pappus: the centre goes round 2π × 4, the circle's area is π.
  ExpectSolid(kFront, {8 * pi * pi, {0, 0, 0}}, {{-5, -1, -5}, {5, 1, 5}});
}

TEST_F(RevolveOperation, ACutTakesTheRingAway) {
  Rectangle(L"SLAB", L"TOP", -10, -10, 10, 10);
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"SLAB","distance_mm":4})");
  DrawRing(L"S", kFront);
  Succeed(kRevolve, LR"({"sketch_name":"S","angle_deg":90,"operation":"cut","direction":"negative"})");
  // The slab is 20 × 4 × 20 about the axis, from t = 0 to 4.
  const bench::Box slab{{-10, 0, -10}, {10, 4, 10}};
  ExpectSolid(kFront, BoxPiece(slab.low, slab.high) - Ring(90, 1), slab);
}

TEST_F(RevolveOperation, APartInInchesHasTheSameMillimetres) {
  Current().length_unit = bench::LengthUnit::kInch;
  DrawRing(L"S", kFront);
  Succeed(kRevolve, LR"({"sketch_name":"S","angle_deg":90})");
  ExpectSolid(kFront, Ring(90, -1), kQuarterDown);
}

TEST_F(RevolveOperation, AnswersAndHistoryAndTreeFollowTheArguments) {
  DrawRing(L"S", kFront);
  ClearHistory();
  const auto result = Run(kRevolve, LR"({"sketch_name":"s","angle_deg":22.75})");
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"Revolve 'Revolve 1' created from 's' (22.8 deg).");
  EXPECT_EQ(result.dataJson, LR"({"feature_name":"Revolve 1"})");
  ASSERT_EQ(UndoStack().size(), 1u);
  EXPECT_EQ(UndoStack().back().label, L"Create Revolve 1");
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

TEST_F(RevolveOperation, ArgumentsAreCheckedInTheirOrder) {
  DrawRing(L"S", kFront);
  const wchar_t* const angle = L"'angle_deg' must be greater than 0.";
  ExpectRefusals({
      {kRevolve, LR"({"angle_deg":0})", L"'sketch_name' is required."},
      {kRevolve, LR"({"sketch_name":"?","angle_deg":0,"operation":"odd"})", angle},
      {kRevolve, LR"({"sketch_name":"?","angle_deg":-90})", angle},
      {kRevolve, LR"({"sketch_name":"?","angle_deg":nan})", angle},
      {kRevolve, LR"({"sketch_name":"?","operation":"odd"})",
       L"Unsupported operation 'odd'. Use 'join' or 'cut'."},
      {kRevolve, LR"({"sketch_name":"?"})",
       L"Sketched curve feature '?' not found. Create/commit it with api_sketch_* first."},
      // An angle without an end passes here and is the host's to refuse.
      {kRevolve, LR"({"sketch_name":"S","angle_deg":1e999})", L"Failed to set revolve angle."},
  });
}

TEST_F(RevolveOperation, WhatTheHostRefusesLeavesTheModelAsItWas) {
  DrawRing(L"S", kFront);
  Rectangle(L"ACROSS", L"FRONT", -1, 0, 2, 3);
  DrawAxis(L"ACROSS");
  ExpectHostRefusal(kRevolve, L"S", LR"(,"angle_deg":400)");
  ExpectHostRefusal(kRevolve, L"S", LR"(,"operation":"cut")");
  ExpectHostRefusal(kRevolve, L"ACROSS", L"");
}

TEST_F(RevolveOperation, EachRowThatFailsHasItsMessage) {
  DrawRing(L"S", kFront);
  ExpectFailures(kRevolve, LR"({"sketch_name":"S"})",
                 {
                     {"ProElementAlloc", 1, L"Failed to allocate revolve element tree."},
                     {"ProElementAlloc", 2, L"Failed to populate revolve feature type elements."},
                     {"ProElementIntegerSet", 5, L"Failed to populate revolve feature type elements."},
                     {"ProElementAlloc", 7, L"Failed to add revolve section element."},
                     {"ProElementIntegerSet", 6, L"Failed to set revolve direction."},
                     {"ProElementIntegerSet", 7, L"Failed to set revolve axis option."},
                     {"ProElementAlloc", 10, L"Failed to set revolve angle."},
                     {"ProElementDoubleSet", 1, L"Failed to set revolve angle."},
                     {"ProSelectionAlloc", 1, L"Failed to select the active part for feature creation."},
                     {"ProFeatureSketchedWithOptionsCreate", 1,
                      L"Creo could not create the feature from sketch 'S' (status=-8, errors=0)."},
                 });
}

}  // namespace
}  // namespace vek::support

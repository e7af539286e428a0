// The revolve operation: solids, arguments, element tree, failures.
#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include "addin/ops/feature/extrude_revolve.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/feature_solid_sums.h"
#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

using std::numbers::pi;
using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr double kTolerance = 1e-6;

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

class RevolveOperation : public FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    NewPart();
  }

  void DrawRing(const std::wstring& sketch, const SketchFrame& frame) {
    Rectangle(sketch, frame.plane, kInner, 0, kOuter, kHeight);
    Centerline(sketch, 0, -5, 0, 5);
  }

  void CheckSolid(const SketchFrame& frame, const SolidSum& expected) {
    EXPECT_NEAR(Volume(), expected.volume, kTolerance * expected.volume);
    const auto& mass = Current().topology.mass;
    if (!mass) return;
    const Vector3 center = frame.Place(expected.Center());
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(mass->center[i], center[i], kTolerance * 10) << "axis " << i;
  }

  void CheckOutline(const SketchFrame& frame, const bench::Box& local) {
    const bench::Box wanted = frame.Place(local), box = Outline();
    for (int i = 0; i < 3; ++i) {
      EXPECT_NEAR(box.low[i], wanted.low[i], kTolerance * 10) << "axis " << i;
      EXPECT_NEAR(box.high[i], wanted.high[i], kTolerance * 10) << "axis " << i;
    }
  }
};

TEST_F(RevolveOperation, TurnsTheSectionAboutItsCenterline) {
  // Over a quarter, s reaches from 0 to R and w from 0 to R on its side.
  const struct {
    double angle;
    const wchar_t* direction;
    int side;
    bench::Box outline;
  } cases[] = {
      {90, L"", -1, {{0, 0, -kOuter}, {kOuter, kHeight, 0}}},
      {90, L"Negative", 1, {{0, 0, 0}, {kOuter, kHeight, kOuter}}},
      {90, L"positive", -1, {{0, 0, -kOuter}, {kOuter, kHeight, 0}}},
      {180, L"NEGATIVE", 1, {{-kOuter, 0, 0}, {kOuter, kHeight, kOuter}}},
      {360, L"", -1, {{-kOuter, 0, -kOuter}, {kOuter, kHeight, kOuter}}},
      {360, L"negative", 1, {{-kOuter, 0, -kOuter}, {kOuter, kHeight, kOuter}}},
  };
  for (const SketchFrame& frame : {kFront, kTop, kRight}) {
    const std::wstring sketch = frame.plane + std::wstring(L"_RING");
    DrawRing(sketch, frame);
    for (const auto& [angle, direction, side, outline] : cases) {
      SCOPED_TRACE(EncodeUtf8(Format(L"%s %g %s", sketch, angle, direction)));
      const auto data = Succeed(
          L"api_feature_revolve",
          Format(LR"({"sketch_name":"%s","angle_deg":%g,"direction":"%s"})", sketch, angle, direction));
      if (!data.is_object()) continue;
      CheckSolid(frame, Ring(angle, side));
      CheckOutline(frame, outline);
      Succeed(L"api_feature_delete",
              Format(LR"({"feature_name":"%s"})", DecodeUtf8(data.value("feature_name", ""))));
    }
  }
}

TEST_F(RevolveOperation, AnAxisDrawnDownwardsTurnsTheOtherWay) {
  Rectangle(L"S", L"FRONT", kInner, 0, kOuter, kHeight);
  Centerline(L"S", 0, 5, 0, -5);
  Succeed(L"api_feature_revolve", LR"({"sketch_name":"S","angle_deg":90})");
  CheckSolid(kFront, Ring(90, 1));
}

TEST_F(RevolveOperation, ACircleMakesATorus) {
  NewSketch(L"S", L"FRONT");
  Circle(L"S", 4, 0, 1);
  Centerline(L"S", 0, 0, 0, 1);
  Succeed(L"api_feature_revolve", LR"({"sketch_name":"S"})");
  // Pappus: the centre goes round 2π × 4, the circle's area is π.
  CheckSolid(kFront, {8 * pi * pi, {0, 0, 0}});
  CheckOutline(kFront, {{-5, -1, -5}, {5, 1, 5}});
}

TEST_F(RevolveOperation, ACutTakesTheRingAway) {
  Rectangle(L"SLAB", L"TOP", -10, -10, 10, 10);
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"SLAB","distance_mm":4})");
  DrawRing(L"S", kFront);
  Succeed(L"api_feature_revolve",
          LR"({"sketch_name":"S","angle_deg":90,"operation":"cut","direction":"negative"})");
  // The slab is 20 × 4 × 20 about the axis, from t = 0 to 4.
  CheckSolid(kFront, BoxPiece({-10, 0, -10}, {10, 4, 10}) - Ring(90, 1));
}

TEST_F(RevolveOperation, APartInInchesHasTheSameMillimetres) {
  Current().length_unit = bench::LengthUnit::kInch;
  DrawRing(L"S", kFront);
  Succeed(L"api_feature_revolve", LR"({"sketch_name":"S","angle_deg":90})");
  CheckSolid(kFront, Ring(90, -1));
}

std::vector<std::string> Tree(int removal, int direction, const std::string& angle) {
  return {"386",
          "386/387=917",
          "386/388=2",
          "386/1956=917",
          "386/2023=" + std::to_string(removal),
          "386/3176=0",
          "386/447",
          "386/436=" + std::to_string(direction),
          "386/3280=1",
          "386/6",
          "386/6/437",
          "386/6/437/439=262144",
          "386/6/438",
          "386/6/438/440=4194304",
          "386/6/438/442=" + angle};
}

TEST_F(RevolveOperation, TheTreeFollowsTheArguments) {
  DrawRing(L"S", kFront);
  Succeed(L"api_feature_revolve", LR"({"sketch_name":"S"})");
  EXPECT_THAT(RowsOf(*FeatureNamed(L"Revolve 1")), ElementsAreArray(Tree(-1, -1, "360")));
  Succeed(L"api_feature_revolve",
          LR"({"sketch_name":"S","angle_deg":"12.5","direction":"NEGATIVE","operation":"remove"})");
  EXPECT_THAT(RowsOf(*FeatureNamed(L"Revolve_1")), ElementsAreArray(Tree(916, 1, "12.5")));
}

TEST_F(RevolveOperation, RowsComeInTheOrderOfTheirTable) {
  const auto mark = host().journal.Mark();
  {
    const auto tree = feature::RevolveTree({});
    EXPECT_TRUE(tree.ok());
  }
  std::vector<std::string> allocated;
  for (const auto& entry : host().journal.Since(mark))
    if (entry.name == "ProElementAlloc") allocated.push_back(entry.arguments);
  EXPECT_THAT(allocated, ElementsAre("386", "387", "388", "1956", "2023", "3176", "447", "436", "3280", "6",
                                     "437", "438", "439", "440", "442"));
}

TEST_F(RevolveOperation, AnswersWithTheNewNameAndEntersItIntoTheHistory) {
  DrawRing(L"S", kFront);
  ClearHistory();
  const auto result = Run(L"api_feature_revolve", LR"({"sketch_name":"s","angle_deg":22.75})");
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"Revolve 'Revolve 1' created from 's' (22.8 deg).");
  EXPECT_EQ(result.dataJson, LR"({"feature_name":"Revolve 1"})");
  ASSERT_EQ(UndoStack().size(), 1u);
  EXPECT_EQ(UndoStack().back().label, L"Create Revolve 1");
}

TEST_F(RevolveOperation, ArgumentsAreCheckedInTheirOrder) {
  const struct {
    const wchar_t* arguments;
    const wchar_t* message;
  } cases[] = {
      {L"{\"angle_deg\":0}", L"'sketch_name' is required."},
      {L"{\"sketch_name\":\"?\",\"angle_deg\":0,\"operation\":\"odd\"}",
       L"'angle_deg' must be greater than 0."},
      {L"{\"sketch_name\":\"?\",\"angle_deg\":-90}", L"'angle_deg' must be greater than 0."},
      {L"{\"sketch_name\":\"?\",\"angle_deg\":nan}", L"'angle_deg' must be greater than 0."},
      {L"{\"sketch_name\":\"?\",\"operation\":\"odd\"}",
       L"Unsupported operation 'odd'. Use 'join' or 'cut'."},
      {L"{\"sketch_name\":\"?\"}",
       L"Sketched curve feature '?' not found. Create/commit it with api_sketch_* first."},
  };
  const ModelState before = State();
  for (const auto& [arguments, message] : cases) ExpectFailure(L"api_feature_revolve", arguments, message);
  EXPECT_EQ(State(), before);
}

TEST_F(RevolveOperation, WhatTheHostRefusesLeavesTheModelAsItWas) {
  DrawRing(L"S", kFront);
  Rectangle(L"ACROSS", L"FRONT", -1, 0, 2, 3);
  Centerline(L"ACROSS", 0, -5, 0, 5);
  const wchar_t* const arguments[] = {
      LR"({"sketch_name":"S","angle_deg":400})",
      LR"({"sketch_name":"S","operation":"cut"})",
      LR"({"sketch_name":"ACROSS"})",
  };
  const ModelState before = State();
  for (const wchar_t* each : arguments) {
    SCOPED_TRACE(EncodeUtf8(each));
    ExpectFailureStart(Run(L"api_feature_revolve", each), L"Creo could not create the feature from sketch '");
    EXPECT_EQ(State(), before);
  }
}

TEST_F(RevolveOperation, AnAngleWithoutAnEndIsTheHostsToRefuse) {
  DrawRing(L"S", kFront);
  const ModelState before = State();
  for (const wchar_t* angle : {L"\"inf\"", L"1e999"})
    ExpectFailure(L"api_feature_revolve", Format(LR"({"sketch_name":"S","angle_deg":%s})", angle),
                  L"Failed to set revolve angle.");
  EXPECT_EQ(State(), before);
}

TEST_F(RevolveOperation, EachRowThatFailsHasItsMessage) {
  DrawRing(L"S", kFront);
  const struct {
    const char* call;
    int occurrence;
    const wchar_t* message;
  } cases[] = {
      {"ProElementAlloc", 1, L"Failed to allocate revolve element tree."},
      {"ProElementAlloc", 2, L"Failed to populate revolve feature type elements."},
      {"ProElementIntegerSet", 5, L"Failed to populate revolve feature type elements."},
      {"ProElementAlloc", 7, L"Failed to add revolve section element."},
      {"ProElementIntegerSet", 6, L"Failed to set revolve direction."},
      {"ProElementIntegerSet", 7, L"Failed to set revolve axis option."},
      {"ProElementAlloc", 10, L"Failed to set revolve angle."},
      {"ProElemtreeElementAdd", 13, L"Failed to set revolve angle."},
      {"ProElementDoubleSet", 1, L"Failed to set revolve angle."},
      {"ProSelectionAlloc", 1, L"Failed to select the active part for feature creation."},
      {"ProFeatureSketchedWithOptionsCreate", 1,
       L"Creo could not create the feature from sketch 'S' (status=-10, errors=0)."},
  };
  const ModelState before = State();
  for (const auto& [call, occurrence, message] : cases) {
    SCOPED_TRACE(std::string(call) + " " + std::to_string(occurrence));
    faults().Clear();
    faults().Fail(call, PRO_TK_OUT_OF_MEMORY, occurrence);
    ExpectFailure(L"api_feature_revolve", LR"({"sketch_name":"S"})", message);
    EXPECT_EQ(State(), before);
  }
}

}  // namespace
}  // namespace vek::support

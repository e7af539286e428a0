// The axis of a revolve: which line of a sketch becomes it, when one is added, and when the revolve gives up.
#include <gmock/gmock.h>

#include <limits>

#include "addin/ops/feature/revolve_centerline.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/feature_test.h"
#include "tests/support/captured_log.h"

namespace vek::support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const wchar_t* kNoAxis =
    L"Revolve requires a sketch centerline axis. Draw the axis with api_sketch_line_two_points using "
    L"\"construction\": true or \"centerline\": true (Creo maps both to a centerline).";

struct Segment {
  double x1, y1, x2, y2;
};

class RevolveAxis : public FeatureTest {
 protected:
  // A new sketch, which the helpers below speak of.
  void DrawLines(const std::vector<Segment>& lines, const std::vector<Segment>& construction) {
    sketch_ = Format(L"S%d", ++sketches_);
    NewSketch(sketch_, L"XY");
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

  void ExpectRefusal(const std::wstring& arguments, const std::wstring& message) {
    const auto result = Prepare(arguments);
    EXPECT_FALSE(result.success);
    EXPECT_EQ(EncodeUtf8(result.message), EncodeUtf8(message));
    EXPECT_EQ(result.dataJson, L"null");
  }

  std::wstring sketch_;
  int sketches_ = 0;
};

constexpr Segment kVertical{0, -5, 0, 5};
constexpr Segment kSecondVertical{-1, -5, -1, 5};
constexpr Segment kHorizontal{-5, -8, 5, -8};

TEST_F(RevolveAxis, ALineIsPromotedByItsKindItsDirectionOrItsNumber) {
  const struct {
    std::vector<Segment> lines;
    std::vector<Segment> construction;
    const wchar_t* arguments;
    Segment promoted;
  } cases[] = {
      // Nothing is asked for: the first construction line.
      {{kHorizontal}, {kVertical, kHorizontal}, L"{}", kVertical},
      // A word or a direction looks for a line that lies so.
      {{}, {kVertical, kHorizontal}, LR"({"axis":" x "})", kHorizontal},
      {{}, {kHorizontal, kVertical}, LR"({"axis":"Y"})", kVertical},
      {{}, {kHorizontal, kVertical}, LR"({"axis_direction":[0,0,-2]})", kVertical},
      // A word goes before a direction.
      {{}, {kVertical, kHorizontal}, LR"({"axis":"X","axis_direction":[0,1]})", kHorizontal},
      // None lies so: the first all the same.
      {{}, {kVertical}, LR"({"axis":"X"})", kVertical},
      {{kHorizontal}, {kVertical, kSecondVertical}, LR"({"axis_direction":[1,0]})", kVertical},
      // By number, among the construction lines; with no direction the first of them already fits.
      {{}, {kVertical, kSecondVertical}, LR"({"axis":"A:2","axis_direction":[1,0]})", kSecondVertical},
      {{}, {kVertical, kSecondVertical}, LR"({"axis":" l:2 ","axis_direction":[1,0]})", kSecondVertical},
      {{}, {kVertical, kSecondVertical}, LR"({"axis":"A:3","axis_direction":[1,0]})", kVertical},
      // By number, among the lines, when none is a construction line.
      {{kHorizontal, kVertical}, {}, LR"({"axis":"L:2"})", kVertical},
      {{kHorizontal, kVertical}, {kSecondVertical}, LR"({"axis":"L:2"})", kSecondVertical},
  };
  for (const auto& [lines, construction, arguments, promoted] : cases) {
    SCOPED_TRACE(EncodeUtf8(arguments));
    DrawLines(lines, construction);
    const std::size_t before = CountOf(PRO_2D_LINE);
    const auto result = Prepare(arguments);
    EXPECT_TRUE(result.success) << EncodeUtf8(result.message);
    EXPECT_EQ(result.dataJson, L"null");
    ExpectAxis(promoted);
    EXPECT_EQ(CountOf(PRO_2D_LINE), before - 1);
  }
}

TEST_F(RevolveAxis, ASketchWithoutALineIsGivenAnAxisThatIsAskedFor) {
  constexpr Segment kUp{0, -50, 0, 50};
  constexpr Segment kAcross{-50, 0, 50, 0};
  // In model units, not millimetres.
  Current().length_unit = bench::LengthUnit::kInch;
  const struct {
    const wchar_t* arguments;
    Segment injected;
  } cases[] = {
      {LR"({"axis":"Y"})", kUp},
      {LR"({"axis":"?"})", kUp},
      {LR"({"axis":" x "})", kAcross},
      {LR"({"axis":"X","axis_direction":[0,1]})", kAcross},
      {LR"({"axis_direction":[1,0]})", kAcross},
      {LR"({"axis_direction":[1,1]})", kUp},
      {LR"({"axis_direction":[-2,1,-1]})", kAcross},
      {LR"({"axis_direction":[1,0,-2]})", kUp},
      // A direction counts beside every word but X.
      {LR"({"axis":"?","axis_direction":[1,0]})", kAcross},
      {LR"({"axis":"?","axis_direction":[1]})", kUp},
  };
  for (const auto& [arguments, injected] : cases) {
    SCOPED_TRACE(EncodeUtf8(arguments));
    DrawLines({}, {});
    ClearCapturedLog();
    const auto result = Prepare(arguments);
    EXPECT_TRUE(result.success) << EncodeUtf8(result.message);
    ExpectAxis(injected);
    EXPECT_EQ(CountCaptured(L"Feature Revolve: injecting centerline from axis / axis_direction"), 1);
  }
}

TEST_F(RevolveAxis, ASketchWithACenterlineIsLeftAlone) {
  DrawLines({}, {kHorizontal});
  DrawAxis(sketch_);
  const auto mark = host().journal.Mark();
  EXPECT_TRUE(Prepare(LR"({"axis":"X","axis_direction":[1,0]})").success);
  ExpectAxis(kVertical);
  EXPECT_EQ(CountOf(PRO_2D_LINE), 1u);
  EXPECT_THAT(CallsSince(mark, {"ProSectionRegenerate", "ProFeatureWithoptionsRedefine"}), IsEmpty());
}

TEST_F(RevolveAxis, ThePreparationMakesItsCallsInTheirOrder) {
  DrawLines({}, {kVertical});
  ClearCapturedLog();
  const auto mark = host().journal.Mark();
  EXPECT_TRUE(Prepare(L"{}").success);
  EXPECT_THAT(CallsSince(mark, {"ProFeatureElemtreeExtract", "ProSectionEntityIsConstruction",
                                "ProSectionEntityDelete", "ProSectionEntityAdd", "ProSectionRegenerate",
                                "ProSecerrorAlloc", "ProSecerrorCount", "ProSecerrorFree",
                                "ProFeatureWithoptionsRedefine", "ProFeatureElemtreeFree"}),
              ElementsAre(
                  // Looking for a centerline in vain,
                  "ProFeatureElemtreeExtract", "ProFeatureElemtreeFree",
                  // the edit,
                  "ProFeatureElemtreeExtract", "ProSectionEntityIsConstruction", "ProSectionEntityDelete",
                  "ProSectionEntityAdd", "ProSecerrorAlloc", "ProSectionRegenerate", "ProSecerrorCount",
                  "ProSecerrorFree", "ProFeatureWithoptionsRedefine",
                  // and a look at what came of it.
                  "ProFeatureElemtreeExtract", "ProFeatureElemtreeFree", "ProFeatureElemtreeFree"));
  // The line has the id behind that of the point that each sketch starts with.
  EXPECT_EQ(CountCaptured(L"Feature Revolve: promoting entity id=2 to centerline"), 1);
  EXPECT_EQ(CountCaptured(L"Feature Revolve: section regen after centerline status=0 errCount=0"), 1);
  EXPECT_EQ(CountCaptured(Format(L"Feature Revolve: sketch redefine status=0 errCount=0 featId=%d",
                                 FeatureNamed(sketch_)->id)),
            1);
}

TEST_F(RevolveAxis, WithNoLineAndNoWishTheSketchStaysAsItIs) {
  for (const wchar_t* arguments : {L"{}", LR"({"axis_direction":[1]})", LR"({"axis":""})"}) {
    DrawLines({kVertical}, {});
    ExpectRefusal(arguments, kNoAxis);
    EXPECT_EQ(CountOf(PRO_2D_LINE), 1u);
    EXPECT_EQ(CountOf(PRO_2D_CENTER_LINE), 0u);
  }
}

TEST_F(RevolveAxis, APromotionThatFailsGivesWayToAnAddedAxis) {
  for (const char* call : {"ProSectionEntityDelete", "ProSectionEntityAdd"}) {
    DrawLines({}, {kHorizontal});
    faults().Fail(call, PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Prepare(LR"({"axis":"Y"})").success) << call;
    ExpectAxis({0, -50, 0, 50});

    DrawLines({}, {kHorizontal});
    faults().Fail(call, PRO_TK_GENERAL_ERROR);
    ExpectRefusal(L"{}", kNoAxis);
    EXPECT_EQ(CountOf(PRO_2D_LINE), 1u);
  }
}

TEST_F(RevolveAxis, EachFailingCallHasItsMessage) {
  const struct {
    const char* call;
    int occurrence;
    const wchar_t* message;
  } cases[] = {
      // The first extraction only looks for a centerline; one that fails is taken for a sketch without.
      {"ProFeatureElemtreeExtract", 2, L"Failed to read sketch section while preparing revolve axis."},
      {"ProElementSpecialvalueGet", 2, L"Failed to read sketch section while preparing revolve axis."},
      {"ProSectionEntityIdsGet", 2, L"Sketch has no entities for a revolve axis."},
      {"ProArrayAlloc", 1, L"Failed to allocate redefine options."},
      {"ProFeatureWithoptionsRedefine", 1, L"Failed to update sketch with a revolve centerline (status=-8)."},
      {"ProFeatureElemtreeExtract", 3, L"Sketch still has no centerline after axis promotion."},
  };
  for (const auto& [call, occurrence, message] : cases) {
    SCOPED_TRACE(std::string(call) + " " + std::to_string(occurrence));
    DrawLines({}, {kVertical});
    faults().Clear();
    faults().Fail(call, PRO_TK_BAD_CONTEXT, occurrence);
    ExpectRefusal(L"{}", message);
  }
  DrawLines({}, {kVertical});
  faults().NoEffect("ProFeatureWithoptionsRedefine");
  ExpectRefusal(L"{}", L"Sketch still has no centerline after axis promotion.");
}

TEST_F(RevolveAxis, CallsWhoseStatusIsNotTestedMayFail) {
  for (const char* call : {"ProFeatureElemtreeExtract", "ProSectionEntityIdsGet", "ProSecerrorAlloc",
                           "ProSectionRegenerate", "ProSecerrorCount"}) {
    DrawLines({}, {kVertical});
    faults().Fail(call, PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Prepare(L"{}").success) << call;
    ExpectAxis(kVertical);
  }
}

TEST_F(RevolveAxis, ARevolvePreparesItsAxisAndKeepsItWhenItFails) {
  DrawLines({}, {kVertical});
  DrawCircle(sketch_);
  // The section holds, the axis doesn't: a turn of 400 degrees is the host's to refuse.
  Run(L"api_feature_revolve", Format(LR"({"sketch_name":"%s","angle_deg":400})", sketch_));
  ExpectAxis(kVertical);
  Succeed(L"api_feature_revolve", Format(LR"({"sketch_name":"%s"})", sketch_));
  // A torus by Pappus: 2π × 4 round, and π across.
  EXPECT_NEAR(Volume(), 8 * 3.14159265358979 * 3.14159265358979, 1e-4);
}

TEST(AxisMatchesLine, HoldsALineAgainstAWordOrADirection) {
  using Numbers = std::vector<double>;
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    Segment line;
    const wchar_t* axis;
    Numbers direction;
    bool matches;
  } cases[] = {
      {{0, 0, 1e-10, 0}, L"X", {}, false},
      {{0, 0, kNan, 0}, L"", {}, false},
      {{0, 0, 1, 2}, L"Y", {}, true},
      {{0, 0, 2, 1}, L"Y", {}, false},
      {{0, 0, 1, 2}, L" z", {}, true},
      {{0, 0, 1, 2}, L"X", {1, 0}, false},
      {{0, 0, 1, 2}, L"odd", {1}, true},
      {{0, 0, 1, 2}, L"", {0, 0}, true},
      {{0, 0, 1, 2}, L"", {kNan, 0}, true},
      {{0, 0, 0, 1}, L"", {1, 0, 5}, true},
      {{0, 0, 1, 1}, L"", {1, -1, 1}, false},
      {{0, 0, 1, 1}, L"", {1, -1, 2}, true},
      // 0.7 is the cosine of 45.6 degrees: a line at 45 matches, one at 46 doesn't.
      {{0, 0, 1, 1}, L"", {0, -4}, true},
      {{0, 0, 1.0355, 1}, L"", {0, 1}, false},
  };
  for (const auto& [line, axis, direction, matches] : cases)
    EXPECT_EQ(feature::AxisMatchesLine(line.x1, line.y1, line.x2, line.y2, axis, direction), matches)
        << line.x2 << ' ' << line.y2 << ' ' << EncodeUtf8(axis);
}

}  // namespace
}  // namespace vek::support

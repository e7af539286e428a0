// Patterns of features, and the holes that come of them: words, arguments, groups, axes. And the mirror of
// geometry: what is mirrored, and the attempt at a solid.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>

#include "addin/ops/feature/pattern_words.h"
#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kRectangular = L"api_pattern_rectangular";
constexpr const wchar_t* kCircular = L"api_pattern_circular";

using Place = std::pair<double, double>;

// A hole of the radius 3 through the plate of 10.
SolidSum HolePiece(const Place& place) {
  const double volume = std::numbers::pi * 3 * 3 * 10;
  return {volume, {volume * place.first, volume * place.second, volume * 5}};
}

class PatternOperation : public FeatureTest {
 protected:
  // A plate of 10 mm on FRONT that ends at its two corners.
  void Plate(double x1, double y1, double x2, double y2) {
    Rectangle(L"PLATE", L"XY", x1, y1, x2, y2);
    Create(L"api_feature_extrude", LR"({"sketch_name":"PLATE","distance_mm":10})");
    plate_ = {{x1, y1, 0}, {x2, y2, 10}};
  }

  void DrawHole(const std::wstring& sketch, const Place& place) {
    CreateSketch(sketch, L"XY");
    Draw(L"api_sketch_circle_center_radius", sketch,
         Format(LR"("cx":%g,"cy":%g,"radius":3)", place.first, place.second));
  }

  std::wstring Cut(const std::wstring& sketch) {
    return Create(L"api_feature_extrude",
                  Format(LR"({"sketch_name":"%s","distance_mm":10,"operation":"cut"})", sketch));
  }

  // A plate with one hole in it, which is "Extrude_1".
  void DrilledPlate(double x1, double y1, double x2, double y2, const Place& hole) {
    Plate(x1, y1, x2, y2);
    DrawHole(L"FIRST", hole);
    ASSERT_EQ(Cut(L"FIRST"), L"Extrude_1");
    ClearHistory();
  }

  void ExpectHoles(const std::vector<Place>& holes) {
    SolidSum sum = BoxPiece(plate_.low, plate_.high);
    for (const Place& hole : holes) sum = sum - HolePiece(hole);
    ExpectSolid(kFront, sum, plate_);
  }

  std::size_t CountNamed(const std::wstring& name) {
    return std::ranges::count(Current().features, name, [](const auto& feature) { return feature->name; });
  }

 private:
  bench::Box plate_;
};

TEST(PatternWords, EachTableHasMeaningsOfItsOwn) {
  const struct {
    const wchar_t* word;
    const wchar_t* direction;
    const wchar_t* mirror;
    const wchar_t* axis;  // its two planes
  } cases[] = {{L"X", L"RIGHT", L"RIGHT", L"TOP FRONT"},
               {L"XZ", L"FRONT", L"FRONT", L"RIGHT TOP"},
               {L"Z", L"TOP", L"TOP", L"RIGHT FRONT"},
               {L" yz\t", L"RIGHT", L"RIGHT", L"TOP FRONT"},
               {L"  ", L"TOP", L"TOP", L""},
               {L" dtm1 ", L"DTM1", L"DTM1", L""}};
  for (const auto& [word, direction, mirror, axis] : cases) {
    SCOPED_TRACE(EncodeUtf8(word));
    EXPECT_EQ(feature::DirectionPlaneName(word), direction);
    EXPECT_EQ(feature::MirrorPlaneName(word), mirror);
    const auto planes = feature::AxisPlanePair(word);
    EXPECT_EQ(planes ? planes->first + L" " + planes->second : std::wstring(), axis);
  }
}

TEST_F(PatternOperation, AGridOfHolesStandsInThePlate) {
  DrilledPlate(0, 0, 100, 60, {10, 10});
  const auto result = Run(kRectangular,
                          LR"({"feature_names":["","Extrude_1"],"x_direction":"x","x_count":4,
      "x_spacing_mm":20,"y_direction":"Z","y_count":3,"y_spacing_mm":15})");
  const std::wstring message = L"Rectangular pattern 'Pattern 1' created: 4x3, spacing 20 mm / 15 mm.";
  ExpectCreated(result, L"Pattern 1", message);
  EXPECT_EQ(CountCaptured(L"CreoMcpPattern: " + message), 1);
  EXPECT_EQ(CountCaptured(Format(L"Pattern Create [rectangular]: status=0 leaderId=%d class=0",
                                 FeatureNamed(L"Extrude_1")->id)),
            1);
  std::vector<Place> holes;
  for (const double x : {10, 30, 50, 70})
    for (const double y : {10, 25, 40}) holes.emplace_back(x, y);
  ExpectHoles(holes);
}

TEST_F(PatternOperation, ADirectionIsTheNormalOfItsPlaneAndCountsAreRead) {
  const std::tuple<const wchar_t*, const wchar_t*, std::vector<Place>> cases[] = {
      // Without a word the direction is TOP's, along +y.
      {LR"("x_count":3,"x_spacing_mm":10)", L"3x1, spacing 10 mm / 0 mm", {{50, 30}, {50, 40}, {50, 50}}},
      {LR"("x_direction":" right ","x_count":"3.0000000001","x_spacing_mm":-20)",
       L"3x1, spacing -20 mm / 0 mm",
       {{50, 30}, {30, 30}, {10, 30}}},
      // A second direction needs both its word and a count.
      {LR"("x_direction":"X","x_count":2,"x_spacing_mm":20,"y_direction":"Z","y_count":1.9,"y_spacing_mm":10)",
       L"2x1, spacing 20 mm / 0 mm",
       {{50, 30}, {70, 30}}},
      {LR"("x_direction":"X","x_count":2,"x_spacing_mm":20,"y_direction":"Z","y_count":2.5,"y_spacing_mm":-10)",
       L"2x2, spacing 20 mm / -10 mm",
       {{50, 30}, {70, 30}, {50, 20}, {70, 20}}}};
  DrilledPlate(0, 0, 100, 60, {50, 30});
  for (const auto& [arguments, told, holes] : cases) {
    SCOPED_TRACE(EncodeUtf8(arguments));
    const auto result = Run(kRectangular, Format(LR"({"feature_names":["Extrude_1"],%s})", arguments));
    EXPECT_EQ(EncodeUtf8(result.message),
              EncodeUtf8(Format(L"Rectangular pattern 'Pattern 1' created: %s.", told)));
    ExpectHoles(holes);
    Delete(L"Pattern 1");
  }
}

TEST_F(PatternOperation, HolesStandAboutAnAxis) {
  // The axis Y is where RIGHT and TOP meet: the line along z.
  const std::tuple<const wchar_t*, const wchar_t*, std::vector<double>> cases[] = {
      {LR"("axis":"Y","count":6)", L"6 instances around Y, 360 deg", {0, 60, 120, 180, 240, 300}},
      // The whole angle over the count: a gap of one step stays at its end.
      {LR"("axis":" xz","count":4,"angle_deg":90)", L"4 instances around  xz, 90 deg", {0, 22.5, 45, 67.5}},
      {LR"("axis":"FRONT","count":3,"angle_deg":90,"fit_within_angle":false)",
       L"3 instances around FRONT, 90 deg",
       {0, 90, 180}}};
  DrilledPlate(-50, -50, 50, 50, {30, 0});
  for (const auto& [arguments, told, degrees] : cases) {
    SCOPED_TRACE(EncodeUtf8(arguments));
    ClearHistory();
    const auto result = Run(kCircular, Format(LR"({"feature_names":["Extrude_1"],%s})", arguments));
    // The axis is not the client's step.
    ExpectCreated(result, L"Pattern 1", Format(L"Circular pattern 'Pattern 1' created: %s.", told));
    std::vector<Place> holes;
    for (const double angle : degrees) {
      const double radians = angle * std::numbers::pi / 180;
      holes.emplace_back(30 * std::cos(radians), 30 * std::sin(radians));
    }
    ExpectHoles(holes);
    Delete(L"Pattern 1");
  }
}

TEST_F(PatternOperation, AnAxisIsMadeOnceAndANamedOneWins) {
  DrilledPlate(-50, -50, 50, 50, {30, 0});
  Create(kCircular, LR"({"feature_names":["Extrude_1"],"axis":"Y","count":2})");
  EXPECT_EQ(CountNamed(L"VEK_AXIS_Y"), 1u);
  EXPECT_EQ(TreeOf(FeatureNamed(L"VEK_AXIS_Y")),
            "386(387=926 1964 2015(2016(2017=1 2018=@1) 2016(2017=1 2018=@1)))");
  const int axis_id = FeatureNamed(L"VEK_AXIS_Y")->id;

  // The same word finds it again.
  DrawHole(L"SECOND", {0, 20});
  ASSERT_EQ(Cut(L"SECOND"), L"Extrude 2");
  EXPECT_EQ(Create(kCircular, LR"({"feature_names":["Extrude 2"],"axis":" y","count":2})"), L"Pattern_1");
  EXPECT_EQ(CountNamed(L"VEK_AXIS_Y"), 1u);
  // An axis called Z is the one meant by Z, though that word has a meaning: a turn about the line along z.
  DrawHole(L"THIRD", {10, 10});
  ASSERT_EQ(Cut(L"THIRD"), L"Extrude_2");
  FeatureNamed(L"VEK_AXIS_Y")->name = L"Z";
  EXPECT_EQ(Create(kCircular, LR"({"feature_names":["Extrude_2"],"axis":"Z","count":2})"), L"Pattern 2");
  EXPECT_EQ(CountNamed(L"VEK_AXIS_Z"), 0u);
  EXPECT_EQ(FeatureNamed(L"Z")->id, axis_id);
  ExpectHoles({{30, 0}, {-30, 0}, {0, 20}, {0, -20}, {10, 10}, {-10, -10}});
}

class GroupedPattern : public PatternOperation {
 protected:
  // Two holes, the one right behind the other in the part: "Extrude_1" and "Extrude 2".
  void SetUp() override {
    PatternOperation::SetUp();
    Plate(0, 0, 100, 60);
    DrawHole(L"A", {10, 10});
    DrawHole(L"B", {10, 40});
    ASSERT_EQ(Cut(L"A"), L"Extrude_1");
    ASSERT_EQ(Cut(L"B"), L"Extrude 2");
    ClearHistory();
  }
};

TEST_F(GroupedPattern, SeveralFeaturesAreLedByTheirGroup) {
  Succeed(kRectangular,
          LR"({"feature_names":["Extrude_1","Extrude 2"],"x_direction":"X","x_count":3,"x_spacing_mm":20})");
  ASSERT_NE(FeatureNamed(L"VEK_PATTERN_GROUP"), nullptr);
  EXPECT_EQ(CountCaptured(Format(L"Pattern Create [rectangular]: status=0 leaderId=%d class=1",
                                 FeatureNamed(L"VEK_PATTERN_GROUP")->id)),
            1);
  ExpectHoles({{10, 10}, {30, 10}, {50, 10}, {10, 40}, {30, 40}, {50, 40}});
}

TEST_F(GroupedPattern, AGroupIsMadeBeforeABadAxisAndBehindABadDirection) {
  const std::size_t features = Current().features.size();
  ExpectFailure(kRectangular,
                LR"({"feature_names":["Extrude_1","Extrude 2"],"x_direction":"odd","x_count":2,
                    "x_spacing_mm":20})",
                L"Could not resolve direction 'odd' to datum plane 'ODD'.");
  EXPECT_EQ(Current().features.size(), features);
  ExpectFailure(kCircular, LR"({"feature_names":["Extrude_1","Extrude 2"],"axis":"odd","count":2})",
                L"Could not resolve axis 'odd'. Use X/Y/Z or an existing axis name.");
  EXPECT_EQ(CountNamed(L"VEK_PATTERN_GROUP"), 1u);
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(GroupedPattern, FeaturesThatAreNoNeighboursMakeNoGroup) {
  const ModelState before = State();
  const auto result = Run(kCircular, LR"({"feature_names":["PLATE","Extrude 2"],"axis":"Y","count":2})");
  EXPECT_FALSE(result.success);
  EXPECT_THAT(
      EncodeUtf8(result.message),
      testing::AllOf(testing::StartsWith("Could not group 2 features for a single pattern (status=-"),
                     testing::EndsWith("). Creo local groups require contiguous features in the regen "
                                       "list. Pattern one feature at a time, or group them in the UI "
                                       "first.")));
  EXPECT_EQ(State(), before);
}

TEST_F(PatternOperation, WhatIsMissingIsRefused) {
  const wchar_t* const x_count = L"'x_count' must be an integer >= 2.";
  const wchar_t* const unknown = L"Feature ' ' not found. Call api_feature_list and use an exact name.";
  DrilledPlate(0, 0, 100, 60, {10, 10});
  ExpectRefusals({
      {kRectangular, LR"({"x_count":2.99999999999})", x_count},
      {kRectangular, LR"({"x_count":1e300})", x_count},
      {kRectangular, LR"({"x_count":"nan"})", x_count},
      {kRectangular, LR"({"x_count":2,"x_spacing_mm":1,"feature_names":[" "],"x_direction":"odd"})", unknown},
      {kRectangular,
       LR"({"x_count":2,"x_spacing_mm":1,"feature_names":["Extrude_1"],"y_direction":" Odd","y_count":2})",
       L"Could not resolve direction ' Odd' to datum plane 'ODD'."},
      {kCircular, LR"({"count":2,"feature_names":["Extrude_1"],"axis":" "})", L"'axis' is required."},
  });
  FeatureNamed(L"TOP")->name = L"ELSE";
  ExpectRefusals({{kRectangular, LR"({"feature_names":["Extrude_1"],"x_count":2,"x_spacing_mm":9})",
                   L"Could not resolve direction '' to datum plane 'TOP'."},
                  {kCircular, LR"({"count":2,"feature_names":["Extrude_1"],"axis":"y"})",
                   L"Need datum planes RIGHT and TOP to build axis 'y'."}});
}

constexpr const wchar_t* kMirror = L"api_pattern_mirror";

// A block of 20 by 10 by 5, 1000 mm³, with a corner in the origin. It is the feature "Extrude 1".
class MirrorOperation : public FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    ASSERT_EQ(Block(20, 10, 5), L"Extrude 1");
    ClearHistory();
  }

  static std::wstring Message(const std::wstring& name, const std::wstring& plane) {
    return Format(
        L"Geometry mirror '%s' created from 1 feature(s) across %s (Toolkit mirrors feature "
        L"surfaces/geometry, not UI feature-mirror).",
        name, plane);
  }
};

TEST_F(MirrorOperation, ABossIsDoubledAcrossThePlaneThatIsMeant) {
  // The plane, and which axis is normal to it.
  const std::tuple<const wchar_t*, const wchar_t*, int> cases[] = {
      {L"", L"TOP", 1}, {LR"(,"mirror_plane":"y")", L"FRONT", 2}, {LR"(,"mirror_plane":"YZ")", L"RIGHT", 0}};
  for (const auto& [arguments, plane, axis] : cases) {
    SCOPED_TRACE(EncodeUtf8(plane) + EncodeUtf8(arguments));
    ClearCapturedLog();
    const auto result = Run(kMirror, Format(LR"({"feature_names":["Extrude 1"]%s})", arguments));
    // The mirror is "Mirror 1" and its solid the next.
    EXPECT_EQ(CountCaptured(L"CreoMcpPattern: " + result.message), 1);
    ExpectCreated(result, L"Mirror_1", Message(L"Mirror_1", plane));
    EXPECT_NE(FeatureNamed(L"Mirror 1"), nullptr);
    // The block touches the plane: the two are one body, twice as large.
    bench::Box box{{0, 0, 0}, {20, 10, 5}};
    box.low[axis] = -box.high[axis];
    EXPECT_NEAR(Volume(), 2 * 1000, 2000 * 1e-6);
    ExpectBox(box);
    Delete(L"Mirror_1");
    Delete(L"Mirror 1");
  }
}

TEST_F(MirrorOperation, TheTreesAreThoseOfAMirrorAndOfASolidFromItsQuilt) {
  Create(kMirror, LR"({"feature_names":["Extrude 1"],"mirror_plane":"RIGHT"})");
  EXPECT_EQ(TreeOf(FeatureNamed(L"Mirror 1")), "386(387=950 3182=1 3161=@6 3162=@1 3163=0)");
  EXPECT_EQ(TreeOf(FeatureNamed(L"Mirror_1")), "386(387=917 388=512 3023=@1)");
  EXPECT_EQ(CountCaptured(Format(L"Feature Create [mirror]: status=0 errCount=0 featId=%d",
                                 FeatureNamed(L"Mirror 1")->id)),
            1);
  EXPECT_EQ(CountCaptured(Format(L"Feature Create [solidify]: status=0 errCount=0 featId=%d",
                                 FeatureNamed(L"Mirror_1")->id)),
            1);
}

TEST_F(MirrorOperation, ASolidThatCannotBeMadeIsNoFailure) {
  // The first creation is that of the mirror.
  faults().Fail("ProFeatureWithoptionsCreate", PRO_TK_BAD_CONTEXT, 2);
  const auto result = Run(kMirror, LR"({"feature_names":["Extrude 1"],"mirror_plane":"RIGHT"})");
  ExpectCreated(result, L"Mirror 1", Message(L"Mirror 1", L"RIGHT"));
  EXPECT_EQ(FeatureNamed(L"Mirror_1"), nullptr);
  EXPECT_NEAR(Volume(), 1000, 1e-3);
  EXPECT_EQ(CountCaptured(L"Feature Create [solidify]: status=-8 errCount=0 featId=0"), 1);
}

TEST_F(MirrorOperation, AnAxisIsMirroredWithoutASolid) {
  Rectangle(L"HOLE", L"XY", 2, 2, 4, 4);
  Create(L"api_feature_extrude", LR"({"sketch_name":"HOLE","distance_mm":5,"operation":"cut"})");
  Create(L"api_pattern_circular", LR"({"feature_names":["Extrude_1"],"axis":"Y","count":2,"angle_deg":1})");
  const auto mark = host().journal.Mark();
  const double volume = Volume();
  EXPECT_EQ(Create(kMirror, LR"({"feature_names":["VEK_AXIS_Y"],"mirror_plane":"RIGHT"})"), L"Mirror 1");
  EXPECT_THAT(CallsSince(mark, {"ProFeatureWithoptionsCreate"}),
              testing::ElementsAre("ProFeatureWithoptionsCreate"));
  EXPECT_NEAR(Volume(), volume, 1e-6);
}

TEST_F(MirrorOperation, WhatCannotBeMirroredIsRefused) {
  const wchar_t* const none = L"'feature_names' must contain at least one feature.";
  const wchar_t* const nothing =
      L"No mirrorable geometry found on the named feature(s). Creo Toolkit cannot mirror features the way "
      L"the UI does; it mirrors surfaces/quilts/curves/axes owned by those features.";
  Rectangle(L"SPARE", L"XY", 40, 0, 50, 10);
  Create(L"api_feature_extrude", LR"({"sketch_name":"SPARE","distance_mm":5})");
  Succeed(L"api_feature_suppress", LR"({"feature_name":"Extrude_1"})");
  ExpectRefusals({{kMirror, LR"({"feature_names":[""],"mirror_plane":"odd"})", none},
                  {kMirror, LR"({"feature_names":["odd"],"mirror_plane":"odd"})",
                   L"Feature 'odd' not found. Call api_feature_list and use an exact name."},
                  {kMirror, LR"({"feature_names":["Extrude 1"],"mirror_plane":" odd"})",
                   L"Could not resolve mirror_plane ' odd' to datum plane 'ODD'."},
                  // What is suppressed has no geometry that counts.
                  {kMirror, LR"({"feature_names":["Extrude_1"]})", nothing}});
}

}  // namespace
}  // namespace vek::support

// Shells, holes and rotations of a block of 40 x 20 x 10 mm with a corner in the origin.
#include <windows.h>

#include <numbers>
#include <set>

#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kShell = L"api_feature_shell";
constexpr const wchar_t* kHole = L"api_feature_hole";
constexpr const wchar_t* kRotate = L"api_feature_transform_rotate";

constexpr double kBlock = 40 * 20 * 10;

using ShellOperation = FeatureOnABlock;

TEST_F(ShellOperation, WithoutASurfaceItIsClosed) {
  const auto mark = host().journal.Mark();
  const auto result = Run(kShell, LR"({"thickness_mm":"2"})");
  // How every tree becomes a feature.
  EXPECT_THAT(CallsSince(mark, {"ProMdlToModelitem", "ProSelectionAlloc", "ProArrayAlloc",
                                "ProFeatureWithoptionsCreate", "ProSolidRegenerate", "ProWindowRepaint",
                                "ProModelitemNameSet"}),
              testing::ElementsAre("ProMdlToModelitem", "ProSelectionAlloc", "ProArrayAlloc",
                                   "ProFeatureWithoptionsCreate", "ProSolidRegenerate", "ProWindowRepaint",
                                   "ProModelitemNameSet", "ProSolidRegenerate"));
  ExpectCreated(result, L"Shell 1", L"Closed shell 'Shell 1' created (thickness 2 mm).");
  EXPECT_EQ(TreeOf(FeatureNamed(L"Shell 1")), "386(387=928 74=2 2194=1)");
  // Walls of 2 mm all around leave a hollow of (40 - 4) x (20 - 4) x (10 - 4).
  EXPECT_NEAR(Volume(), kBlock - 36 * 16 * 6, 1e-3);
  ExpectBox({{0, 0, 0}, {40, 20, 10}});
}

TEST_F(ShellOperation, IsOpenWhereSurfacesAreRemoved) {
  const auto result = Run(kShell, LR"({"thickness_mm":2,"face_selectors":[">Z",">Z"]})");
  // What is named twice stands twice in the list.
  ExpectCreated(result, L"Shell 1", L"Shell 'Shell 1' created (thickness 2 mm, 2 removed face(s)).");
  EXPECT_EQ(TreeOf(FeatureNamed(L"Shell 1")), "386(387=928 73=@2 74=2 2194=1)");
  // The hollow goes on up to the top.
  EXPECT_NEAR(Volume(), kBlock - 36 * 16 * 8, 1e-3);
}

TEST_F(ShellOperation, IndicesAreRoundedAndComeBeforeSelectors) {
  // The ids of the part's surfaces, in the order in which the host visits them.
  std::set<int> sorted;
  for (const auto& face : Current().topology.faces) sorted.insert(Current().ids_of_keys.at(face.key));
  const std::vector<int> ids(sorted.begin(), sorted.end());
  ASSERT_EQ(ids.size(), 6u);
  Succeed(kShell, LR"({"thickness_mm":1,"face_selectors":["<X"],"face_indices":[2.5,1.4]})");
  const auto& removed =
      std::get<std::vector<bench::ItemReference>>(FeatureNamed(L"Shell 1")->tree->Find({73})->value);
  ASSERT_EQ(removed.size(), 3u);
  EXPECT_EQ(removed[0].id, ids[2]);
  EXPECT_EQ(removed[1].id, ids[0]);
}

TEST_F(ShellOperation, ArgumentsAreChecked) {
  ExpectRefusals(
      {{kShell, LR"({"thickness_mm":"nan"})", L"'thickness_mm' is required and must be greater than 0."},
       {kShell, LR"({"thickness_mm":"inf"})", L"Failed to set shell thickness."},
       {kShell, LR"({"thickness_mm":2,"face_indices":[0.4]})",
        L"face_indices entry 0 is out of range (part has 6 surfaces)."},
       {kShell, LR"({"thickness_mm":2,"face_indices":[1,6.5],"face_selectors":["?"]})",
        L"face_indices entry 7 is out of range (part has 6 surfaces)."},
       {kShell, LR"({"thickness_mm":2,"face_indices":[1e300]})",
        L"face_indices entry 2147483647 is out of range (part has 6 surfaces)."},
       {kShell, LR"({"thickness_mm":2,"face_selectors":[">Z","|Z"]})",
        L"Unsupported face selector '|Z'. Use >X, <X, >Y, <Y, >Z or <Z."}});
}

class HoleOperation : public FeatureOnABlock {
 protected:
  void SetUp() override {
    FeatureOnABlock::SetUp();
    CreateSketch(L"P", L"XY");
    Draw(L"api_sketch_point", L"P", LR"("x":10,"y":10)");
    Draw(L"api_sketch_point", L"P", LR"("x":30,"y":5)");
    ClearHistory();
    // An installation without charts, whatever the environment of the tests has.
    ::SetEnvironmentVariableW(L"PRO_DIRECTORY", directory().c_str());
  }

  // The block without a hole of 4 x 6 mm that starts at its bottom.
  void ExpectHoleAt(double x, double y) {
    const double hole = std::numbers::pi / 4 * 4 * 4 * 6;
    ExpectSolid(kFront,
                BoxPiece({0, 0, 0}, {40, 20, 10}) - SolidSum{hole, {hole * x, hole * y, hole * 6 / 2}},
                {{0, 0, 0}, {40, 20, 10}});
  }
};

std::wstring HoleWith(const std::wstring& more) {
  return Format(LR"({"sketch_name":"P","diameter_mm":4,"depth_mm":6%s})", more);
}

TEST_F(HoleOperation, GoesIntoTheBlockAlongTheNormalOfTheSketch) {
  const auto result = Run(kHole, HoleWith(L""));
  ExpectCreated(result, L"Hole 1",
                L"Hole 'Hole 1' created (diameter 4 mm, depth 6 mm) on point 1 of 'P', axis normal to sketch "
                L"plane.");
  ExpectHoleAt(10, 10);
  EXPECT_EQ(TreeOf(FeatureNamed(L"Hole 1")),
            "386(387=911 388=1 1671(1672=16 3887=-1 82=4 1684(1686(1688=1 434=6) 1685(1687=6)) 1689=-1 "
            "6053=-1) 1340(1341=@1 696=4 1677=@1 6051=@1 6052=1))");
}

TEST_F(HoleOperation, CanDoWithoutThePlaneOfTheSketch) {
  faults().Fail("ProFeatureElemtreeExtract", PRO_TK_GENERAL_ERROR);
  ExpectCreated(Run(kHole, HoleWith(L"")), L"Hole 1",
                L"Hole 'Hole 1' created (diameter 4 mm, depth 6 mm) on point 1 of 'P'.");
  EXPECT_THAT(TreeOf(FeatureNamed(L"Hole 1")), testing::EndsWith(" 1340(1341=@1 696=4))"));
}

TEST_F(HoleOperation, PointIndicesAreRounded) {
  const std::pair<const wchar_t*, int> cases[] = {{L"0.6", 1}, {L"1.4", 1}, {L"1.5", 2}, {L"\"none\"", 1}};
  for (const auto& [index, point] : cases) {
    SCOPED_TRACE(EncodeUtf8(index));
    const auto result = Run(kHole, HoleWith(Format(LR"(,"point_index":%s)", index)));
    EXPECT_THAT(EncodeUtf8(result.message),
                testing::HasSubstr("on point " + std::to_string(point) + " of 'P'"));
    point == 1 ? ExpectHoleAt(10, 10) : ExpectHoleAt(30, 5);
    Delete(L"Hole 1");
  }
}

TEST_F(HoleOperation, ArgumentsAreChecked) {
  CreateSketch(L"NO POINTS", L"XY");
  DrawCircle(L"NO POINTS");
  const wchar_t* const index = L"'point_index' must be 1 or greater.";
  ExpectRefusals({{kHole, LR"({"sketch_name":"?","diameter_mm":1,"depth_mm":"nan"})",
                   L"'depth_mm' is required and must be greater than 0."},
                  {kHole, LR"({"sketch_name":"?","diameter_mm":1,"depth_mm":1,"point_index":0.4})", index},
                  {kHole, LR"({"sketch_name":"?","diameter_mm":1,"depth_mm":1,"point_index":"nan"})", index},
                  {kHole, LR"({"sketch_name":"no points","diameter_mm":1,"depth_mm":1})",
                   L"Sketch 'no points' has no datum points. Add a sketch point to place the hole."},
                  {kHole, LR"({"sketch_name":"P","diameter_mm":1,"depth_mm":1,"point_index":2.5})",
                   L"point_index 3 is out of range (sketch 'P' has 2 point(s))."}});
}

TEST_F(HoleOperation, WarningsAboutTheThreadFollowTheMessage) {
  const std::wstring made =
      L"Hole 'Hole 1' created (diameter 4 mm, depth 6 mm) on point 1 of 'P', axis normal to sketch plane.";
  const std::wstring untold =
      L" Warning: hole_type=tapped requires thread_designation (e.g. M8x1.25); no cosmetic thread created.";
  const std::wstring no_charts = L"Could not locate Creo text\\hole charts (ISO.hol).";
  const std::wstring failed = L" Warning: cosmetic thread failed: " + no_charts;
  const std::pair<const wchar_t*, std::wstring> cases[] = {
      {LR"(,"hole_type":"TAPPED")", untold},
      {LR"(,"hole_type":" tapped")", L""},
      {LR"(,"hole_type":"clearance","thread_designation":"M4x.7")", failed},
      {LR"(,"thread_designation":" ")",
       L" Warning: cosmetic thread failed: 'thread_designation' is required (e.g. M8x1.25)."}};
  for (const auto& [more, warning] : cases) {
    SCOPED_TRACE(EncodeUtf8(more));
    ClearHistory();
    ExpectCreated(Run(kHole, HoleWith(more)), L"Hole 1", made + warning);
    Delete(L"Hole 1");
  }
  EXPECT_EQ(CountCaptured(L"Feature Hole: auto-thread failed: " + no_charts), 1);
}

using RotateOperation = FeatureOnABlock;

TEST_F(RotateOperation, TurnsTheSolidAboutAnAxisAnywhere) {
  // About the vertical through (40, 20) by 90 degrees (x, y) goes to (40 - (y - 20), 20 + (x - 40)):
  // x in 0..40 becomes y in -20..20, y in 0..20 becomes x in 40..60. A fourth number is none of the axis's.
  const auto result = Run(kRotate, LR"({"axis_start":[40,20,5,99],"axis_direction":[0,0,3],"angle_deg":90})");
  const std::wstring name = Format(L"FLEX_MOVE_%d", Current().features.back()->id);
  ExpectCreated(result, name,
                Format(L"Rotated the solid body 90 deg about the given axis (feature '%s').", name));
  ExpectBox({{40, -20, 0}, {60, 20, 10}});
  EXPECT_NEAR(Volume(), kBlock, 1e-6);
  EXPECT_EQ(TreeOf(Current().features.back().get()),
            "386(387=1254 5471(2213=4) 5400=0 4300(4301(4306(4307(4308=10 4309)))))");
}

TEST_F(RotateOperation, TheAxisIsInMillimetresInEveryUnit) {
  Delete(L"Extrude 1");
  Current().length_unit = bench::LengthUnit::kInch;
  Succeed(L"api_feature_extrude", LR"({"sketch_name":"BLOCK","distance_mm":10})");
  const bench::Box before = Outline();
  // About the horizontal through (20, 10, 5) by -180 degrees: x stays, y goes to 20 - y, z to 10 - z.
  Succeed(kRotate, LR"({"axis_start":[20,10,5],"axis_direction":[2e-12,0,0],"angle_deg":-180})");
  ExpectBox({{before.low[0], 20 - before.high[1], 10 - before.high[2]},
             {before.high[0], 20 - before.low[1], 10 - before.low[2]}});
}

TEST_F(RotateOperation, ArgumentsAreChecked) {
  ExpectRefusals({{kRotate, LR"({"axis_start":[0,0,"x"],"axis_direction":[0,0,0]})",
                   L"'axis_start' and 'axis_direction' must each be arrays of three numbers."},
                  {kRotate, LR"({"axis_start":[0,0,0],"axis_direction":[0,0,1e-13],"angle_deg":1})",
                   L"'axis_direction' must be a non-zero vector."},
                  {kRotate, LR"({"axis_start":[0,0,0],"axis_direction":[0,0,1],"angle_deg":"inf"})",
                   L"Failed to set rotate transformation matrix."}});
}

}  // namespace
}  // namespace vek::support

// Shells, holes and rotations of a block of 40 x 20 x 10 mm with a corner in the origin.
#include <gmock/gmock.h>
#include <windows.h>

#include <algorithm>
#include <numbers>
#include <set>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/feature_test.h"
#include "tests/support/captured_log.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kShell = L"api_feature_shell";
constexpr const wchar_t* kHole = L"api_feature_hole";
constexpr const wchar_t* kRotate = L"api_feature_transform_rotate";

constexpr double kBlock = 40 * 20 * 10;

class FeatureOnABlock : public FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    Block(40, 20, 10);
    ClearHistory();
  }

  void ExpectBox(const bench::Box& expected) {
    const bench::Box box = Outline();
    for (int i = 0; i < 3; ++i) {
      EXPECT_NEAR(box.low[i], expected.low[i], 1e-6) << "axis " << i;
      EXPECT_NEAR(box.high[i], expected.high[i], 1e-6) << "axis " << i;
    }
  }

  void ExpectCreated(const CreoMcpOperationResult& result, const std::wstring& name,
                     const std::wstring& message) {
    EXPECT_TRUE(result.success);
    EXPECT_EQ(EncodeUtf8(result.message), EncodeUtf8(message));
    EXPECT_EQ(result.dataJson, Format(LR"({"feature_name":"%s"})", name));
    ASSERT_EQ(UndoStack().size(), 1u);
    EXPECT_EQ(UndoStack().back().label, L"Create " + name);
  }
};

// ---- shell

class ShellOperation : public FeatureOnABlock {
 protected:
  // The ids of the part's surfaces, in the order in which the host visits them.
  std::vector<int> SurfaceIds() {
    std::set<int> ids;
    for (const auto& face : Current().topology.faces) ids.insert(Current().ids_of_keys.at(face.key));
    return {ids.begin(), ids.end()};
  }
  std::vector<int> RemovedIds(const std::wstring& shell) {
    const auto* element = FeatureNamed(shell)->tree->Find({73});
    std::vector<int> ids;
    if (element == nullptr) return ids;
    for (const auto& item : std::get<std::vector<bench::ItemReference>>(element->value))
      ids.push_back(item.id);
    return ids;
  }
};

TEST_F(ShellOperation, WithoutASurfaceItIsClosed) {
  const auto result = Run(kShell, LR"({"thickness_mm":"2"})");
  ExpectCreated(result, L"Shell 1", L"Closed shell 'Shell 1' created (thickness 2 mm).");
  EXPECT_EQ(TreeOf(FeatureNamed(L"Shell 1")), "386(387=928 74=2 2194=1)");
  // Walls of 2 mm all around leave a hollow of (40 - 4) x (20 - 4) x (10 - 4).
  EXPECT_NEAR(Volume(), kBlock - 36 * 16 * 6, 1e-3);
  ExpectBox({{0, 0, 0}, {40, 20, 10}});
}

TEST_F(ShellOperation, IsOpenWhereSurfacesAreRemoved) {
  const auto result = Run(kShell, LR"({"thickness_mm":2,"face_selectors":[">Z"]})");
  ExpectCreated(result, L"Shell 1", L"Shell 'Shell 1' created (thickness 2 mm, 1 removed face(s)).");
  EXPECT_EQ(TreeOf(FeatureNamed(L"Shell 1")), "386(387=928 73=@1 74=2 2194=1)");
  // The hollow goes on up to the top.
  EXPECT_NEAR(Volume(), kBlock - 36 * 16 * 8, 1e-3);
}

TEST_F(ShellOperation, ASurfaceThatIsNamedTwiceStandsTwiceInTheList) {
  const auto result = Run(kShell, LR"({"thickness_mm":2,"face_selectors":[">Z",">Z"]})");
  EXPECT_EQ(result.message, L"Shell 'Shell 1' created (thickness 2 mm, 2 removed face(s)).");
  const auto ids = RemovedIds(L"Shell 1");
  ASSERT_EQ(ids.size(), 2u);
  EXPECT_EQ(ids[0], ids[1]);
}

TEST_F(ShellOperation, IndicesAreRoundedAndComeBeforeSelectors) {
  const std::vector<int> ids = SurfaceIds();
  ASSERT_EQ(ids.size(), 6u);
  Succeed(kShell, LR"({"thickness_mm":1,"face_selectors":["<X"],"face_indices":[2.5,1.4]})");
  const auto removed = RemovedIds(L"Shell 1");
  ASSERT_EQ(removed.size(), 3u);
  EXPECT_EQ(removed[0], ids[2]);
  EXPECT_EQ(removed[1], ids[0]);
}

TEST_F(ShellOperation, ASurfaceThatTheHostCannotNameIsLeftOut) {
  faults().Fail("ProSurfaceToGeomitem", PRO_TK_GENERAL_ERROR);
  EXPECT_EQ(Run(kShell, LR"({"thickness_mm":2,"face_indices":[1]})").message,
            L"Closed shell 'Shell 1' created (thickness 2 mm).");
}

TEST_F(ShellOperation, ArgumentsAreChecked) {
  const wchar_t* const thickness = L"'thickness_mm' is required and must be greater than 0.";
  ExpectRefusals({
      {kShell, LR"({"face_indices":[9]})", thickness},
      {kShell, LR"({"thickness_mm":0})", thickness},
      {kShell, LR"({"thickness_mm":"nan"})", thickness},
      {kShell, LR"({"thickness_mm":"inf"})", L"Failed to set shell thickness."},
      {kShell, LR"({"thickness_mm":2,"face_indices":[0.4]})",
       L"face_indices entry 0 is out of range (part has 6 surfaces)."},
      {kShell, LR"({"thickness_mm":2,"face_indices":[-0.4]})",
       L"face_indices entry 0 is out of range (part has 6 surfaces)."},
      {kShell, LR"({"thickness_mm":2,"face_indices":[-0.5]})",
       L"face_indices entry -1 is out of range (part has 6 surfaces)."},
      {kShell, LR"({"thickness_mm":2,"face_indices":[1,6.5],"face_selectors":["?"]})",
       L"face_indices entry 7 is out of range (part has 6 surfaces)."},
      {kShell, LR"({"thickness_mm":2,"face_indices":[1e300]})",
       L"face_indices entry 2147483647 is out of range (part has 6 surfaces)."},
      {kShell, LR"({"thickness_mm":2,"face_selectors":[">Z","|Z"]})",
       L"Unsupported face selector '|Z'. Use >X, <X, >Y, <Y, >Z or <Z."},
  });
}

TEST_F(ShellOperation, EachFailingCallHasItsMessage) {
  const wchar_t* const surfaces = L"Failed to set shell removal surfaces.";
  ExpectFailures(kShell, LR"({"thickness_mm":2,"face_indices":[1]})",
                 {{"ProElementAlloc", 1, L"Failed to allocate shell element tree."},
                  {"ProElementIntegerSet", 1, L"Failed to set shell feature type."},
                  {"ProReferenceAlloc", 1, surfaces},
                  {"ProArrayAlloc", 1, surfaces},
                  {"ProElementReferencesSet", 1, surfaces},
                  {"ProElementDoubleSet", 1, L"Failed to set shell thickness."},
                  {"ProElementIntegerSet", 2, L"Failed to set shell thickness."},
                  {"ProFeatureWithoptionsCreate", 1,
                   L"Creo could not create the shell feature (status=-8, errors=0)."}});
}

// ---- hole

class HoleOperation : public FeatureOnABlock {
 protected:
  void SetUp() override {
    FeatureOnABlock::SetUp();
    NewSketch(L"P", L"XY");
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
  const auto& plane =
      std::get<std::vector<bench::ItemReference>>(FeatureNamed(L"Hole 1")->tree->Find({1340, 1677})->value);
  EXPECT_EQ(
      CountCaptured(Format(L"Feature Hole: sketch plane type=%d id=%d", plane.at(0).type, plane.at(0).id)),
      1);
}

TEST_F(HoleOperation, CanDoWithoutThePlaneOfTheSketch) {
  for (const char* call : {"ProFeatureElemtreeExtract", "ProElemtreeElementGet", "ProElementReferenceGet",
                           "ProReferenceToSelection", "ProSelectionModelitemGet"}) {
    SCOPED_TRACE(call);
    ClearHistory();
    faults().Fail(call, PRO_TK_GENERAL_ERROR);
    ExpectCreated(Run(kHole, HoleWith(L"")), L"Hole 1",
                  L"Hole 'Hole 1' created (diameter 4 mm, depth 6 mm) on point 1 of 'P'.");
    EXPECT_THAT(TreeOf(FeatureNamed(L"Hole 1")), testing::EndsWith(" 1340(1341=@1 696=4))"));
    ExpectHoleAt(10, 10);
    Delete(L"Hole 1");
  }
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

TEST_F(HoleOperation, ArgumentsAreCheckedInTheirOrder) {
  NewSketch(L"NO POINTS", L"XY");
  DrawCircle(L"NO POINTS");
  const wchar_t* const diameter = L"'diameter_mm' is required and must be greater than 0.";
  const wchar_t* const depth = L"'depth_mm' is required and must be greater than 0.";
  const wchar_t* const index = L"'point_index' must be 1 or greater.";
  ExpectRefusals({
      {kHole, LR"({"diameter_mm":0})", L"'sketch_name' is required."},
      {kHole, LR"({"sketch_name":"?","depth_mm":0})", diameter},
      {kHole, LR"({"sketch_name":"?","diameter_mm":-1,"depth_mm":0})", diameter},
      {kHole, LR"({"sketch_name":"?","diameter_mm":1,"point_index":0})", depth},
      {kHole, LR"({"sketch_name":"?","diameter_mm":1,"depth_mm":"nan","point_index":0})", depth},
      {kHole, LR"({"sketch_name":"?","diameter_mm":1,"depth_mm":1,"point_index":0.4})", index},
      {kHole, LR"({"sketch_name":"?","diameter_mm":1,"depth_mm":1,"point_index":"nan"})", index},
      {kHole, LR"({"sketch_name":"?","diameter_mm":1,"depth_mm":1})",
       L"Sketched curve feature '?' not found. Create/commit it with api_sketch_* first."},
      {kHole, LR"({"sketch_name":"no points","diameter_mm":1,"depth_mm":1})",
       L"Sketch 'no points' has no datum points. Add a sketch point to place the hole."},
      {kHole, LR"({"sketch_name":"P","diameter_mm":1,"depth_mm":1,"point_index":2.5})",
       L"point_index 3 is out of range (sketch 'P' has 2 point(s))."},
      {kHole, LR"({"sketch_name":"P","diameter_mm":1,"depth_mm":1,"point_index":"inf"})",
       L"point_index 2147483647 is out of range (sketch 'P' has 2 point(s))."},
  });
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
       L" Warning: cosmetic thread failed: 'thread_designation' is required (e.g. M8x1.25)."},
  };
  for (const auto& [more, warning] : cases) {
    SCOPED_TRACE(EncodeUtf8(more));
    ClearHistory();
    ExpectCreated(Run(kHole, HoleWith(more)), L"Hole 1", made + warning);
    Delete(L"Hole 1");
  }
  EXPECT_EQ(CountCaptured(L"Feature Hole: auto-thread failed: " + no_charts), 1);
}

TEST_F(HoleOperation, NoThreadIsTriedInAHoleThatFailed) {
  const ModelState before = State();
  const auto mark = host().journal.Mark();
  faults().Fail("ProFeatureWithoptionsCreate", PRO_TK_GENERAL_ERROR);
  ExpectFailure(kHole, HoleWith(LR"(,"thread_designation":"M4x.7")"),
                L"Creo could not create the hole feature (status=-1, errors=0).");
  EXPECT_EQ(State(), before);
  EXPECT_THAT(CallsSince(mark, {"ProElementHoleThreadSeriesSet", "ProSurfaceDiameterEval"}),
              testing::IsEmpty());
}

TEST_F(HoleOperation, EachFailingCallHasItsMessage) {
  const wchar_t* const parameters = L"Failed to populate hole parameters.";
  const wchar_t* const placement = L"Failed to set hole placement.";
  const wchar_t* const direction = L"Failed to set hole direction from the sketch plane.";
  ExpectFailures(
      kHole, HoleWith(L""),
      {{"ProElementAlloc", 1, L"Failed to allocate hole element tree."},
       {"ProElementAlloc", 2, parameters},
       {"ProElementAlloc", 15, parameters},
       {"ProElementAlloc", 16, placement},
       {"ProReferenceAlloc", 1, placement},
       {"ProElementAlloc", 18, placement},
       {"ProReferenceAlloc", 2, direction},
       {"ProReferenceAlloc", 3, direction},
       {"ProElementAlloc", 21, direction},
       {"ProFeatureWithoptionsCreate", 1, L"Creo could not create the hole feature (status=-8, errors=0)."}});
}

// ---- rotate

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

TEST_F(RotateOperation, ANameThatTheHostGaveIsTold) {
  faults().Before("ProModelitemNameGet", [this] { Current().features.back()->name = L"MOVED"; });
  ExpectCreated(Run(kRotate, LR"({"axis_start":[0,0,0],"axis_direction":[1,0,0],"angle_deg":0.25})"),
                L"MOVED", L"Rotated the solid body 0.25 deg about the given axis (feature 'MOVED').");
}

TEST_F(RotateOperation, ArgumentsAreCheckedInTheirOrder) {
  const wchar_t* const arrays = L"'axis_start' and 'axis_direction' must each be arrays of three numbers.";
  const wchar_t* const matrix = L"Failed to set rotate transformation matrix.";
  ExpectRefusals({
      {kRotate, LR"({"axis_direction":[0,0,1]})", arrays},
      {kRotate, LR"({"axis_start":[0,0,0],"axis_direction":[0,1]})", arrays},
      {kRotate, LR"({"axis_start":[0,0,"x"],"axis_direction":[0,0,0]})", arrays},
      {kRotate, LR"({"axis_start":[0,0,0],"axis_direction":[0,0,0]})", L"'angle_deg' is required."},
      {kRotate, LR"({"axis_start":[0,0,0],"axis_direction":[0,0,1e-13],"angle_deg":1})",
       L"'axis_direction' must be a non-zero vector."},
      {kRotate, LR"({"axis_start":[0,0,0],"axis_direction":["nan",0,0],"angle_deg":1})", matrix},
      {kRotate, LR"({"axis_start":[0,0,0],"axis_direction":[0,0,1],"angle_deg":"inf"})", matrix},
      {kRotate, LR"({"axis_start":["inf",0,0],"axis_direction":[0,0,1],"angle_deg":1})", matrix},
  });
}

TEST_F(RotateOperation, EachFailingCallHasItsMessage) {
  const wchar_t* const collect = L"Failed to collect solid surfaces to rotate.";
  const wchar_t* const populate = L"Failed to populate rotate element tree.";
  const wchar_t* const matrix = L"Failed to set rotate transformation matrix.";
  ExpectFailures(kRotate, LR"({"axis_start":[0,0,0],"axis_direction":[0,0,1],"angle_deg":90})",
                 {{"ProSrfcollectionAlloc", 1, collect},
                  {"ProSrfcollinstrAlloc", 1, collect},
                  {"ProSrfcollectionInstructionAdd", 1, collect},
                  {"ProElementAlloc", 1, L"Failed to allocate rotate element tree."},
                  {"ProElementAlloc", 2, populate},
                  {"ProElementCollectionSet", 1, populate},
                  {"ProElementAlloc", 10, populate},
                  {"ProElementAlloc", 11, L"Failed to allocate rotate move value."},
                  {"ProFeatureD3elemMatrixSet", 1, matrix},
                  {"ProElemtreeElementAdd", 10, matrix},
                  {"ProFeatureWithoptionsCreate", 1,
                   L"Creo could not create the rotate feature (status=-8, errors=0)."}});
}

}  // namespace
}  // namespace vek::support

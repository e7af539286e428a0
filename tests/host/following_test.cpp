// What lies on geometry follows it: a block of 40 × 20 × 10 on FRONT, and what stands on its top at z = 10.
#include <ProDimension.h>
#include <ProSolid.h>
#include <gmock/gmock.h>

#include "bench/host/features/dimensions.h"
#include "bench/host/features/feature_removal.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::Creation;

class FollowingTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    if (HasFatalFailure()) return;
    block_ = Extrude(*part_, Plate(), {}).feature;
  }

  ProFeature SketchOn(ProModelitem face, const Drawing& draw) {
    support::Tree tree;
    tree.Integer(tree.Root(), 387, 949);
    tree.Integer(tree.Root(), 511, 0);
    FillSetup(tree, tree.Compound(tree.Compound(tree.Root(), 447), 450), face, PlaneOf(*part_, L"RIGHT"));
    const auto incomplete = Create(*part_, tree.Root(), 2);
    EXPECT_EQ(incomplete.status, PRO_TK_NO_ERROR);
    EXPECT_EQ(Redraw(incomplete.feature, draw).status, PRO_TK_NO_ERROR);
    return incomplete.feature;
  }
  // 10 × 10 on the top.
  ProFeature BossSketch() {
    return SketchOn(Face({0, 0, 1}, 10),
                    [](ProSection section) { support::AddRectangle(section, 10, 5, 20, 15); });
  }
  // The same, 6 high.
  void Boss() {
    boss_sketch_ = BossSketch();
    boss_ = Extrude(*part_, boss_sketch_, {.depth = 6}).feature;
    ExpectVolume(40 * 20 * 10 + 10 * 10 * 6);
  }
  // The block 25 high, and the boss still 6.
  void ExpectRaised() {
    ExpectVolume(40 * 20 * 25 + 10 * 10 * 6);
    ExpectOutline({0, 0, 0}, {40, 20, 25 + 6});
  }

  ProError Set(int symbol, double value) {
    ProDimension dimension{PRO_DIMENSION, symbol, Handle(*part_)};
    EXPECT_EQ(ProDimensionValueSet(&dimension, value), PRO_TK_NO_ERROR);
    return ProSolidRegenerate(Solid(), 0);
  }
  // Moves the whole solid up.
  void Raise(double distance) {
    const Matrix shift{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, distance, 1}}};
    const Collection whole{.of_surfaces = true, .instructions = {{4, true, {}}}};
    const support::NodeRows rows{{{387}, 1254},
                                 {{5471, 2213}, whole},
                                 {{5400}, 0},
                                 {{4300, 4301, 4306, 4307, 4308}, 10},
                                 {{4300, 4301, 4306, 4307, 4309}, shift}};
    ASSERT_EQ(CreateOf(rows).status, PRO_TK_NO_ERROR);
  }
  double HeightOf(const ProFeature& feature) { return part_->FindFeature(feature.id)->plane.origin[2]; }

  ProFeature block_{}, boss_sketch_{}, boss_{};
};

TEST_F(FollowingTest, ABossRisesWithItsBlock) {
  Boss();
  ASSERT_EQ(Set(0, 25), PRO_TK_NO_ERROR);
  ExpectRaised();
  EXPECT_DOUBLE_EQ(HeightOf(boss_sketch_), 25);
  const int asked = host().kernel.RequestsSent();
  EXPECT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(host().kernel.RequestsSent(), asked) << "what has followed lies where it should";
}

TEST_F(FollowingTest, ABossThatWasSavedAndRetrievedWithoutItsSketchRises) {
  Boss();
  ASSERT_EQ(ProFeatureDelete(Solid(), &boss_sketch_.id, 1, nullptr, 0), PRO_TK_NO_ERROR);
  const std::string before = Snapshot(*part_);
  SaveAndRetrieve();
  part_->modified = true;
  EXPECT_EQ(Snapshot(*part_), before);
  ASSERT_EQ(Set(0, 25), PRO_TK_NO_ERROR);
  ExpectRaised();
}

TEST_F(FollowingTest, WhatWasSuppressedMeanwhileFollowsWhenItIsResumed) {
  Boss();
  ASSERT_EQ(SuppressFeatures(*part_, {boss_sketch_.id, boss_.id}), PRO_TK_NO_ERROR);
  ASSERT_EQ(Set(0, 25), PRO_TK_NO_ERROR);
  ASSERT_EQ(ResumeFeatures(*part_, {boss_sketch_.id, boss_.id}, false), PRO_TK_NO_ERROR);
  ExpectRaised();
}

// A pocket of 10 × 10 from below, and on its floor a stud of 2 × 2 × 2 that hangs down.
TEST_F(FollowingTest, AFaceThatIsGoneRefusesWhatLiesOnItAndNothingChanges) {
  const ProFeature outline = Sketch(
      *part_, L"POCKET", L"FRONT", [](ProSection section) { support::AddRectangle(section, 10, 5, 20, 15); });
  ASSERT_EQ(Extrude(*part_, outline, {.depth = 4, .cut = true}).status, PRO_TK_NO_ERROR);
  // The floor looks down, and the section's +y with it: y from -12 to -10 is 10 to 12 of the part.
  const ProFeature sketch = SketchOn(
      Face({0, 0, -1}, -4), [](ProSection section) { support::AddRectangle(section, 12, -12, 14, -10); });
  ASSERT_EQ(Extrude(*part_, sketch, {.depth = 2}).status, PRO_TK_NO_ERROR);
  ExpectVolume(8000 - 10 * 10 * 4 + 8);
  ASSERT_EQ(Set(1, 6), PRO_TK_NO_ERROR);
  ExpectVolume(8000 - 10 * 10 * 6 + 8);
  EXPECT_DOUBLE_EQ(HeightOf(sketch), 6);

  EXPECT_EQ(Set(1, 12), PRO_TK_GENERAL_ERROR) << "the pocket goes right through";
  EXPECT_THAT(host().announcements.Lines(),
              testing::Contains(testing::StartsWith("refused: feature " + std::to_string(sketch.id) +
                                                    ": element 451 is no plane")));
  ExpectVolume(8000 - 10 * 10 * 6 + 8);
  EXPECT_DOUBLE_EQ(HeightOf(sketch), 6);
  EXPECT_EQ(part_->FindFeature(sketch.id)->status, PRO_FEAT_ACTIVE);
  EXPECT_EQ(Set(1, 5), PRO_TK_NO_ERROR);
  ExpectVolume(8000 - 10 * 10 * 5 + 8);
}

// Where TOP and the block's top meet. It has no geometry of its own that would tell that it moved.
TEST_F(FollowingTest, ADatumAxisLiesInTheFaceThatItWasMadeOf) {
  const auto axis = DatumAxis(PlaneOf(*part_, L"TOP"), Face({0, 0, 1}, 10));
  ASSERT_EQ(axis.status, PRO_TK_NO_ERROR);
  EXPECT_DOUBLE_EQ(HeightOf(axis.feature), 10);
  ASSERT_EQ(SuppressFeatures(*part_, {axis.feature.id}), PRO_TK_NO_ERROR);
  ASSERT_EQ(Set(0, 25), PRO_TK_NO_ERROR);
  ASSERT_EQ(ResumeFeatures(*part_, {axis.feature.id}, false), PRO_TK_NO_ERROR);
  EXPECT_DOUBLE_EQ(HeightOf(axis.feature), 25);
  ASSERT_EQ(Set(0, 5), PRO_TK_NO_ERROR);
  EXPECT_DOUBLE_EQ(HeightOf(axis.feature), 5);
}

// What comes behind a feature doesn't carry it away: the face is looked at as it was before the move.
TEST_F(FollowingTest, AMoveBehindItIsNotFollowed) {
  const ProFeature sketch = BossSketch();
  Raise(5);
  ASSERT_EQ(Redraw(sketch, [](ProSection section) { support::AddPoint(section, 0, 0); }).status,
            PRO_TK_NO_ERROR);
  EXPECT_DOUBLE_EQ(HeightOf(sketch), 10);
  // The boss goes from 10 to 16, the block by now from 5 to 15.
  ASSERT_EQ(Extrude(*part_, sketch, {.depth = 6}).status, PRO_TK_NO_ERROR);
  ExpectVolume(8000 + 10 * 10 * 1);
  for (const bool with_sketch : {true, false}) {
    // From 25 to 31, and the block from 5 to 30.
    ASSERT_EQ(Set(0, 25), PRO_TK_NO_ERROR);
    ExpectVolume(40 * 20 * 25 + 10 * 10 * 1);
    ExpectOutline({0, 0, 5}, {40, 20, 31});
    ASSERT_EQ(Set(0, 10), PRO_TK_NO_ERROR);
    ExpectOutline({0, 0, 5}, {40, 20, 16});
    int id = sketch.id;
    if (with_sketch) {
      ASSERT_EQ(ProFeatureDelete(Solid(), &id, 1, nullptr, 0), PRO_TK_NO_ERROR);
    }
  }
}

// At a distance from another plane: where they lie, and what follows them.
class DatumPlanesTest : public support::FeatureTest {
 protected:
  const PlaneFrame& FrameOf(const Creation& creation) {
    return part_->FindFeature(creation.feature.id)->plane;
  }
  // The first dimension of the feature.
  void SetDistance(const Creation& made, double distance) {
    for (const Dimension& dimension : part_->dimensions)
      if (dimension.feature == made.feature.id) {
        ASSERT_EQ(SetValue(*part_, dimension, distance), PRO_TK_NO_ERROR);
        ASSERT_EQ(ProSolidRegenerate(Solid(), 0), PRO_TK_NO_ERROR);
        return;
      }
    ADD_FAILURE() << "the feature has no dimension";
  }
};

TEST_F(DatumPlanesTest, LieAlongTheNormalOfTheirBaseAndFollowIt) {
  const Creation block = Extrude(*part_, Plate(), {});
  ASSERT_EQ(block.status, PRO_TK_NO_ERROR);
  const Creation above = OffsetPlane(*part_, PlaneOf(*part_, L"TOP"), 15, L"ABOVE");
  const Creation below = OffsetPlane(*part_, PlaneOf(*part_, L"ABOVE"), -5, L"BELOW");
  const Creation outside = OffsetPlane(*part_, Face({0, 0, 1}, 10), 2, L"OUTSIDE");
  ASSERT_EQ(above.status, PRO_TK_NO_ERROR);
  ASSERT_EQ(below.status, PRO_TK_NO_ERROR);
  ASSERT_EQ(outside.status, PRO_TK_NO_ERROR);
  // Turned as TOP is: z to its right, x up.
  EXPECT_EQ(FrameOf(above), (PlaneFrame{{0, 15, 0}, {0, 0, 1}, {1, 0, 0}}));
  EXPECT_EQ(FrameOf(below).origin, (Vector3{0, 10, 0}));
  EXPECT_NEAR(FrameOf(outside).origin[2], 12, 1e-9);
  EXPECT_EQ(FrameOf(outside).Normal(), (Vector3{0, 0, 1}));
  SetDistance(block, 20);
  EXPECT_NEAR(FrameOf(outside).origin[2], 22, 1e-9);
}

TEST_F(DatumPlanesTest, TakeAlongWhatLiesOnThem) {
  const Creation base = OffsetPlane(*part_, PlaneOf(*part_, L"FRONT"), 5, L"BASE");
  const Creation next = OffsetPlane(*part_, PlaneOf(*part_, L"BASE"), 5, L"NEXT");
  ASSERT_EQ(next.status, PRO_TK_NO_ERROR);
  ASSERT_EQ(Extrude(*part_, Plate(L"NEXT"), {}).status, PRO_TK_NO_ERROR);
  ExpectOutline({0, 0, 10}, {40, 20, 20});
  SetDistance(base, 25);  // 25 + 5
  EXPECT_EQ(FrameOf(next).origin, (Vector3{0, 0, 30}));
  ExpectOutline({0, 0, 30}, {40, 20, 40});
}

TEST_F(DatumPlanesTest, RefuseWhatIsNoPlane) {
  const ProModelitem top = PlaneOf(*part_, L"TOP");
  for (const int left_out : {410, 411, 412, 413, 414})
    EXPECT_EQ(OffsetPlane(*part_, top, 15, L"P", left_out).status, PRO_TK_GENERAL_ERROR) << left_out;
  ASSERT_EQ(Extrude(*part_, Circle(0, 0, 5), {}).status, PRO_TK_NO_ERROR);
  EXPECT_EQ(OffsetPlane(*part_, Cylinder(*part_), 15, L"P").status, PRO_TK_GENERAL_ERROR);
}

TEST_F(DatumPlanesTest, StandInAssembliesToo) {
  Model& assembly = NewAssembly(L"ASM");
  const Creation plane = OffsetPlane(assembly, PlaneOf(assembly, L"RIGHT"), 7, L"CUT");
  ASSERT_EQ(plane.status, PRO_TK_NO_ERROR);
  ASSERT_EQ(ProSolidRegenerate(SolidHandle(assembly), 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(assembly.FindFeature(plane.feature.id)->plane.origin, (Vector3{7, 0, 0}));
}

}  // namespace
}  // namespace bench

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::Creation;
using support::ExtrudeValues;
using support::Tree;

constexpr double kPi = std::numbers::pi;

class ExtrudeTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    part_ = &NewPart(L"EXTRUDES");
  }
  // 40 by 20, with its corner in the section's origin.
  ProFeature Plate(std::wstring_view plane) {
    return Sketch(*part_, L"PLATE", plane,
                  [](ProSection section) { support::AddRectangle(section, 0, 0, 40, 20); });
  }
  void ExpectVolume(double volume) {
    ASSERT_TRUE(part_->topology.mass);
    EXPECT_NEAR(part_->topology.mass->volume / volume, 1, 1e-6);
  }
  void ExpectOutline(const Vector3& low, const Vector3& high) {
    ASSERT_TRUE(part_->topology.outline);
    for (int i = 0; i < 3; ++i) {
      EXPECT_NEAR(part_->topology.outline->low[i], low[i], 1e-6) << "low " << i;
      EXPECT_NEAR(part_->topology.outline->high[i], high[i], 1e-6) << "high " << i;
    }
  }

  Model* part_ = nullptr;
};

// The section's x and y lie along +X +Y on FRONT, +X -Z on TOP and -Z +Y on RIGHT.
TEST_F(ExtrudeTest, GrowsFromEachPlaneAlongItsNormalAndAgainstIt) {
  struct Case {
    const wchar_t* plane;
    int direction;
    Vector3 low, high;
  };
  const Case cases[] = {
      {L"FRONT", -1, {0, 0, 0}, {40, 20, 10}},  {L"FRONT", 1, {0, 0, -10}, {40, 20, 0}},
      {L"TOP", -1, {0, 0, -20}, {40, 10, 0}},   {L"TOP", 1, {0, -10, -20}, {40, 0, 0}},
      {L"RIGHT", -1, {0, 0, -40}, {10, 20, 0}}, {L"RIGHT", 1, {-10, 0, -40}, {0, 20, 0}},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(testing::Message() << each.plane << ' ' << each.direction);
    part_ = &NewPart(std::wstring(L"E") + each.plane + (each.direction < 0 ? L"A" : L"B"));
    ASSERT_EQ(Extrude(*part_, Plate(each.plane), {.direction = each.direction}).status, PRO_TK_NO_ERROR);
    ExpectVolume(40 * 20 * 10);
    ExpectOutline(each.low, each.high);
  }
}

TEST_F(ExtrudeTest, DepthTypesSayHowFarItGrows) {
  const ProFeature plate = Plate(L"FRONT");
  ASSERT_EQ(Extrude(*part_, plate, {.second_side = 268435456}).status, PRO_TK_NO_ERROR);
  ExpectVolume(40 * 20 * 10);
  ExpectOutline({0, 0, -5}, {40, 20, 5});

  part_ = &NewPart(L"TWO");
  ASSERT_EQ(Extrude(*part_, Plate(L"FRONT"), {.first_side = 128, .depth2 = 4}).status, PRO_TK_NO_ERROR);
  ExpectVolume(40 * 20 * 14);
  ExpectOutline({0, 0, -4}, {40, 20, 10});
}

TEST_F(ExtrudeTest, CutThroughAllTakesTheWholeDepth) {
  ASSERT_EQ(Extrude(*part_, Plate(L"FRONT"), {}).status, PRO_TK_NO_ERROR);
  const ProFeature hole =
      Sketch(*part_, L"HOLE", L"FRONT", [](ProSection section) { support::AddCircle(section, 20, 10, 5); });
  const Creation cut = Extrude(*part_, hole, {.second_side = 1048576, .depth = {}, .cut = true});
  ASSERT_EQ(cut.status, PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->FindFeature(cut.feature.id)->type, 916);
  ExpectVolume(40 * 20 * 10 - kPi * 5 * 5 * 10);
}

TEST_F(ExtrudeTest, ToNextEndsAtTheBody) {
  // On TOP the section's y runs along -Z: a block from z -30 to -10, and y 0 to 20.
  const ProFeature base = Sketch(*part_, L"BASE", L"TOP",
                                 [](ProSection section) { support::AddRectangle(section, 0, 10, 40, 30); });
  ASSERT_EQ(Extrude(*part_, base, {.depth = 20}).status, PRO_TK_NO_ERROR);
  const ProFeature pin =
      Sketch(*part_, L"PIN", L"FRONT", [](ProSection section) { support::AddCircle(section, 20, 10, 3); });
  ASSERT_EQ(Extrude(*part_, pin, {.second_side = 524288, .depth = {}, .direction = 1}).status,
            PRO_TK_NO_ERROR);
  ExpectVolume(40 * 20 * 20 + kPi * 3 * 3 * 10);
  ExpectOutline({0, 0, -30}, {40, 20, 0});
}

TEST_F(ExtrudeTest, PositiveTaperNarrows) {
  const ProFeature square = Sketch(*part_, L"SQUARE", L"FRONT", [](ProSection section) {
    support::AddRectangle(section, -10, -10, 10, 10);
  });
  // 1 mm a side over 10 mm: a frustum between squares of 20 and 18.
  const double taper = std::atan(0.1) * 180 / kPi;
  ASSERT_EQ(Extrude(*part_, square, {.taper_deg = taper}).status, PRO_TK_NO_ERROR);
  ExpectVolume(10.0 / 3 * (20 * 20 + 18 * 18 + 20 * 18));
}

TEST_F(ExtrudeTest, InchesAreInches) {
  part_->length_unit = LengthUnit::kInch;
  const ProFeature square = Sketch(*part_, L"SQUARE", L"FRONT",
                                   [](ProSection section) { support::AddRectangle(section, 0, 0, 2, 1); });
  ASSERT_EQ(Extrude(*part_, square, {.depth = 0.5}).status, PRO_TK_NO_ERROR);
  ExpectVolume(2 * 25.4 * 25.4 * 0.5 * 25.4);
}

TEST_F(ExtrudeTest, KeepsItsSectionWhenTheSketchChangesOrGoes) {
  ProFeature plate = Plate(L"FRONT");
  ASSERT_EQ(Extrude(*part_, plate, {}).status, PRO_TK_NO_ERROR);
  ASSERT_EQ(Redraw(plate, [](ProSection section) { support::AddCircle(section, 100, 100, 1); }).status,
            PRO_TK_NO_ERROR);
  ExpectVolume(40 * 20 * 10);
  ASSERT_EQ(ProFeatureDelete(reinterpret_cast<ProSolid>(part_), &plate.id, 1, nullptr, 0), PRO_TK_NO_ERROR);
  ExpectVolume(40 * 20 * 10);
}

TEST_F(ExtrudeTest, SectionOfAnExtrudeCanBeRedefined) {
  const Creation creation = Extrude(*part_, Plate(L"FRONT"), {});
  ASSERT_EQ(creation.status, PRO_TK_NO_ERROR);
  ASSERT_EQ(
      Redraw(creation.feature, [](ProSection section) { support::AddCircle(section, 20, 10, 5); }).status,
      PRO_TK_NO_ERROR);
  ExpectVolume(40 * 20 * 10 - kPi * 5 * 5 * 10);
}

TEST_F(ExtrudeTest, WhatTheGeometryRefusesLeavesTheModelAsItWas) {
  const ProFeature open =
      Sketch(*part_, L"OPEN", L"FRONT", [](ProSection section) { support::AddLine(section, 0, 0, 10, 0); });
  const ProFeature circle =
      Sketch(*part_, L"CIRCLE", L"FRONT", [](ProSection section) { support::AddCircle(section, 0, 0, 5); });
  part_->modified = false;
  const std::string before = Snapshot(*part_);
  const Creation refusals[] = {
      Extrude(*part_, open, {}),
      Extrude(*part_, circle, {.second_side = 1048576, .depth = {}}),
      Extrude(*part_, circle, {.second_side = 524288, .depth = {}}),
      Extrude(*part_, circle, {.cut = true}),
  };
  for (const Creation& refusal : refusals) {
    EXPECT_NE(refusal.status, PRO_TK_NO_ERROR);
    EXPECT_GT(refusal.errors, 0);
  }
  EXPECT_EQ(Snapshot(*part_), before);
  EXPECT_EQ(std::ranges::count_if(host().announcements.Lines(),
                                  [](const std::string& line) { return line.starts_with("refused: "); }),
            std::ssize(refusals));
  EXPECT_EQ(Extrude(*part_, circle, {}).status, PRO_TK_NO_ERROR) << "the next one works";
}

TEST_F(ExtrudeTest, WrongTreesAreRefused) {
  struct Case {
    const char* what;
    ExtrudeValues values;
    std::function<void(Tree&)> spoil;
  };
  const Case cases[] = {
      {"blind without depth", {.depth = {}}, nullptr},
      {"depth of nothing", {.depth = 0}, nullptr},
      {"negative depth", {.depth = -1}, nullptr},
      {"second depth without use", {.depth2 = 3}, nullptr},
      {"two without the second", {.first_side = 128}, nullptr},
      {"two with a second of nothing", {.first_side = 128, .depth2 = 0}, nullptr},
      {"through all with a depth", {.second_side = 1048576}, nullptr},
      {"unknown depth type", {.second_side = 4096}, nullptr},
      {"types that don't go together", {.first_side = 128, .second_side = 1048576, .depth = {}}, nullptr},
      {"unknown direction", {.direction = 0}, nullptr},
      {"taper of a right angle", {.taper_deg = 90}, nullptr},
      {"unknown element", {}, [](Tree& tree) { tree.Integer(tree.Root(), 3280, 1); }},
      {"element of no known id", {}, [](Tree& tree) { tree.Integer(tree.Root(), 9999, 1); }},
      {"element twice", {}, [](Tree& tree) { tree.Integer(tree.Root(), 436, -1); }},
      {"compound twice", {}, [](Tree& tree) { tree.Compound(tree.Root(), 447); }},
  };
  const ProFeature plate = Plate(L"FRONT");
  const std::string before = Snapshot(*part_);
  const int asked = host().kernel.RequestsSent();
  for (const Case& wrong : cases) {
    Tree tree;
    FillExtrudeTree(tree, wrong.values);
    if (wrong.spoil) wrong.spoil(tree);
    const Creation creation = CreateFromSketch(*part_, tree.Root(), plate);
    EXPECT_NE(creation.status, PRO_TK_NO_ERROR) << wrong.what;
    EXPECT_GT(creation.errors, 0) << wrong.what;
    EXPECT_EQ(Snapshot(*part_), before) << wrong.what;
  }
  EXPECT_EQ(host().kernel.RequestsSent(), asked) << "the kernel has nothing to do with them";
}

TEST_F(ExtrudeTest, EveryElementButNameDraftAngleAndDepthsIsRequired) {
  const ProFeature plate = Plate(L"FRONT");
  for (const int left_out : {388, 1956, 2023, 3176, 447, 436, 515, 5096}) {
    Tree tree;
    const ProElement root = tree.Root();
    tree.Integer(root, 387, 917);
    for (const auto& [id, value] : {std::pair{388, 1}, {1956, 917}, {2023, -1}, {3176, 0}, {436, -1}})
      if (id != left_out) tree.Integer(root, id, value);
    if (left_out != 447) tree.Compound(root, 447);
    if (left_out != 515) {
      const ProElement depth = tree.Compound(root, 515);
      tree.Integer(tree.Compound(depth, 428), 430, 4096);
      const ProElement second = tree.Compound(depth, 429);
      tree.Integer(second, 433, 262144);
      tree.Double(second, 434, 10);
    }
    if (left_out != 5096) tree.Integer(tree.Compound(root, 5096), 5097, -1);
    EXPECT_NE(CreateFromSketch(*part_, tree.Root(), plate).status, PRO_TK_NO_ERROR) << left_out;
  }
}

TEST_F(ExtrudeTest, OnlyACompleteSketchGivesASection) {
  Tree tree;
  FillExtrudeTree(tree, {});
  EXPECT_NE(Create(*part_, tree.Root(), 1).status, PRO_TK_NO_ERROR) << "without a sketch";
  Tree sketch_tree;
  FillSketchTree(sketch_tree, *part_, L"UNFINISHED", L"FRONT");
  const Creation unfinished = Create(*part_, sketch_tree.Root(), 2);
  ASSERT_EQ(unfinished.status, PRO_TK_NO_ERROR);
  EXPECT_EQ(CreateFromSketch(*part_, tree.Root(), unfinished.feature).status, PRO_TK_BAD_INPUTS);
  const ProFeature datum{PRO_FEATURE, part_->features.front()->id, part_};
  EXPECT_EQ(CreateFromSketch(*part_, tree.Root(), datum).status, PRO_TK_BAD_INPUTS);
}

TEST_F(ExtrudeTest, OptionThatKeepsAFailedFeatureKeepsItAndLeavesTheRestWorking) {
  const ProFeature open =
      Sketch(*part_, L"OPEN", L"FRONT", [](ProSection section) { support::AddLine(section, 0, 0, 10, 0); });
  Tree tree;
  FillExtrudeTree(tree, {});
  const Creation kept = CreateFromSketch(*part_, tree.Root(), open, 6);
  EXPECT_EQ(kept.status, PRO_TK_NO_ERROR);
  EXPECT_GT(kept.errors, 0);
  EXPECT_EQ(part_->FindFeature(kept.feature.id)->status, PRO_FEAT_UNREGENERATED);
  EXPECT_EQ(Extrude(*part_, Plate(L"FRONT"), {}).status, PRO_TK_NO_ERROR);
  ExpectVolume(40 * 20 * 10);
  EXPECT_EQ(part_->FindFeature(kept.feature.id)->status, PRO_FEAT_UNREGENERATED);
}

TEST_F(ExtrudeTest, RedefiningAFailedFeatureThatFailsAgainIsRefused) {
  const ProFeature open =
      Sketch(*part_, L"OPEN", L"FRONT", [](ProSection section) { support::AddLine(section, 0, 0, 10, 0); });
  Tree tree;
  FillExtrudeTree(tree, {});
  const Creation kept = CreateFromSketch(*part_, tree.Root(), open, 6);
  ASSERT_EQ(kept.status, PRO_TK_NO_ERROR);
  const std::string before = Snapshot(*part_);

  const Creation again =
      Redraw(kept.feature, [](ProSection section) { support::AddLine(section, 10, 0, 10, 10); });
  EXPECT_NE(again.status, PRO_TK_NO_ERROR);
  EXPECT_GT(again.errors, 0);
  EXPECT_EQ(Snapshot(*part_), before);

  const Creation closed = Redraw(kept.feature, [](ProSection section) {
    support::AddLine(section, 10, 0, 10, 10);
    support::AddLine(section, 10, 10, 0, 0);
  });
  EXPECT_EQ(closed.status, PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->FindFeature(kept.feature.id)->status, PRO_FEAT_ACTIVE);
  ExpectVolume(10.0 * 10 / 2 * 10);
}

}  // namespace
}  // namespace bench

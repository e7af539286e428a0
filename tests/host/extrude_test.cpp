#include <gmock/gmock.h>

#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::Creation;
using support::ExtrudeValues;
using support::Tree;

class ExtrudeTest : public support::FeatureTest {};

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
  const ProFeature plate = Plate();
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
  const ProFeature plate = Plate();
  for (const int left_out : {388, 1956, 2023, 3176, 447, 436, 515, 5096}) {
    Tree tree(left_out);
    FillExtrudeTree(tree, {});
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

TEST_F(ExtrudeTest, FailedFeatureIsKeptWhenAskedForAndOnlyMendedByARedefinition) {
  Tree tree;
  FillExtrudeTree(tree, {});
  const ProFeature open =
      Sketch(*part_, L"OPEN", L"FRONT", [](ProSection section) { support::AddLine(section, 0, 0, 10, 0); });
  const Creation kept = CreateFromSketch(*part_, tree.Root(), open, 0);
  EXPECT_EQ(kept.status, PRO_TK_NO_ERROR);
  EXPECT_GT(kept.errors, 0);
  EXPECT_EQ(part_->FindFeature(kept.feature.id)->status, PRO_FEAT_UNREGENERATED);
  const Creation block = Extrude(*part_, Plate(), {});
  EXPECT_EQ(block.status, PRO_TK_NO_ERROR);
  ExpectVolume(40 * 20 * 10);
  EXPECT_EQ(part_->FindFeature(kept.feature.id)->status, PRO_FEAT_UNREGENERATED);

  const std::string before = Snapshot(*part_);
  const Creation again =
      Redraw(kept.feature, [](ProSection section) { support::AddLine(section, 10, 0, 10, -10); });
  EXPECT_NE(again.status, PRO_TK_NO_ERROR);
  EXPECT_GT(again.errors, 0);
  EXPECT_EQ(Snapshot(*part_), before);

  // A triangle beside the block.
  const Creation closed = Redraw(kept.feature, [](ProSection section) {
    support::AddLine(section, 10, 0, 10, -10);
    support::AddLine(section, 10, -10, 0, 0);
  });
  EXPECT_EQ(closed.status, PRO_TK_NO_ERROR);
  EXPECT_EQ(part_->FindFeature(kept.feature.id)->status, PRO_FEAT_ACTIVE);
  ExpectVolume(40 * 20 * 10 + 10.0 * 10 / 2 * 10);
}

}  // namespace
}  // namespace bench

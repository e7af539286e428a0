#include <ProModelitem.h>
#include <gmock/gmock.h>

#include "bench/host/calls/element_handles.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::Creation;
using support::Tree;
using testing::ElementsAre;
using testing::HasSubstr;

class SketchFeatureTest : public support::FeatureTest {
 protected:
  Creation Incomplete(std::wstring_view name, std::wstring_view plane) {
    Tree tree;
    FillSketchTree(tree, *part_, name, plane);
    return Create(*part_, tree.Root(), 2);
  }
  Feature& Of(const ProFeature& feature) { return *part_->FindFeature(feature.id); }
  int ItemsOf(const ProFeature& feature, ProType type) {
    int count = 0;
    for (const GeometryItem& item : Of(feature).items) count += item.type == type && item.alive;
    return count;
  }
};

TEST_F(SketchFeatureTest, TakesNoSectionButThatOfATree) {
  ProFeature sketch = Incomplete(L"EMPTY", L"TOP").feature;
  ProElement tree = nullptr;
  ProSection own = nullptr;
  ASSERT_EQ(ProFeatureElemtreeExtract(&sketch, nullptr, PRO_FEAT_EXTRACT_NO_OPTS, &tree), PRO_TK_NO_ERROR);
  const ProElement sketcher = HandleInTree(*UseElement(tree)->node->Child(447)->Child(458));
  ASSERT_EQ(ProSection2DAlloc(&own), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElementSpecialvalueSet(sketcher, own), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProFeatureElemtreeFree(&sketch, tree), PRO_TK_NO_ERROR);
}

TEST_F(SketchFeatureTest, EmptyAndDegenerateSectionsAreRefusedAndChangeNothing) {
  const Creation creation = Incomplete(L"OUTLINE", L"FRONT");
  part_->modified = false;
  const std::string before = Snapshot(*part_);
  for (const Drawing& draw :
       {Drawing([](ProSection) {}),
        Drawing([](ProSection section) { support::AddLine(section, 3, 3, 3, 3); }),
        Drawing([](ProSection section) { support::AddArc(section, 0, 0, 1, 0, 20); })}) {
    const Creation redrawn = Redraw(creation.feature, draw);
    EXPECT_NE(redrawn.status, PRO_TK_NO_ERROR);
    EXPECT_GT(redrawn.errors, 0);
    EXPECT_EQ(Snapshot(*part_), before);
  }
}

TEST_F(SketchFeatureTest, DrawingIntoAnExtractedTreeReachesTheFeatureOnlyByRedefinition) {
  ProFeature sketch =
      Sketch(*part_, L"OUTLINE", L"FRONT", [](ProSection s) { support::AddLine(s, 0, 0, 1, 0); });
  const std::string before = Snapshot(*part_);
  ProElement tree = nullptr;
  ASSERT_EQ(ProFeatureElemtreeExtract(&sketch, nullptr, PRO_FEAT_EXTRACT_NO_OPTS, &tree), PRO_TK_NO_ERROR);
  EXPECT_EQ(support::AddLine(support::SectionIn(tree), 1, 0, 1, 1), 2);
  EXPECT_EQ(Snapshot(*part_), before);
  EXPECT_EQ(Redefine(sketch, tree).status, PRO_TK_NO_ERROR);
  EXPECT_EQ(ItemsOf(sketch, PRO_CURVE), 2);
  EXPECT_EQ(ProFeatureElemtreeFree(&sketch, tree), PRO_TK_NO_ERROR);
}

TEST_F(SketchFeatureTest, WrongTreesAreRefused) {
  using Items = std::vector<ItemReference>;
  const Items right{{PRO_SURFACE, PlaneOf(*part_, L"RIGHT").id, Solid()}};
  const Items front{{PRO_SURFACE, PlaneOf(*part_, L"FRONT").id, Solid()}};
  const Items feature{{PRO_FEATURE, part_->OwnerOf(PRO_SURFACE, front[0].id)->id, Solid()}};
  const auto in_setup = [](int id) { return std::vector<int>{447, 450, id}; };
  const support::NodeRows rows{{{387}, 949},       {{511}, 0},         {in_setup(451), front},
                               {in_setup(452), 1}, {in_setup(454), 4}, {in_setup(455), right}};
  const support::NodeRow changes[] = {{in_setup(455), front},
                                      {in_setup(454), 3},
                                      {in_setup(451), feature},
                                      {in_setup(451), {}},
                                      {in_setup(436), 1}};
  for (const auto& change : changes) ExpectRefusal(With(rows, change), 0, kIncompleteFeature);
  EXPECT_EQ(CreateOf(rows, kIncompleteFeature).status, PRO_TK_NO_ERROR);
}

TEST_F(SketchFeatureTest, ExtractedTreeIsFreedAsItsFeatureStands) {
  ProFeature sketch = Incomplete(L"OUTLINE", L"FRONT").feature;
  ProElement first = nullptr, second = nullptr, third = nullptr;
  for (ProElement* tree : {&first, &second, &third})
    ASSERT_EQ(ProFeatureElemtreeExtract(&sketch, nullptr, PRO_FEAT_EXTRACT_NO_OPTS, tree), PRO_TK_NO_ERROR);
  const ProSection section = support::SectionIn(first);
  EXPECT_EQ(ProElementFree(&first), PRO_TK_BAD_CONTEXT) << "the feature exists";
  EXPECT_EQ(ProSectionNameSet(section, support::NameBuffer(L"GONE")), PRO_TK_INVALID_PTR)
      << "went with its tree";
  ASSERT_EQ(ProFeatureDelete(Solid(), &sketch.id, 1, nullptr, 0), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElementFree(&second), PRO_TK_NO_ERROR);
  ProFeatureElemtreeFree(&sketch, third);
  EXPECT_THAT(TakeViolations(), ElementsAre(HasSubstr("ProElementFree"), HasSubstr("ProSectionNameSet"),
                                            HasSubstr("ProFeatureElemtreeFree")));
}

}  // namespace
}  // namespace bench

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

TEST_F(SketchFeatureTest, IncompleteOneHasAnEmptySectionAndAsksNothingOfTheKernel) {
  const int asked = host().kernel.RequestsSent();
  const Creation creation = Incomplete(L"OUTLINE", L"FRONT");
  ASSERT_EQ(creation.status, PRO_TK_NO_ERROR);
  EXPECT_EQ(host().kernel.RequestsSent(), asked);
  EXPECT_EQ(creation.feature.type, PRO_FEATURE);
  EXPECT_TRUE(Of(creation.feature).incomplete);
  EXPECT_EQ(Of(creation.feature).type, 949);
  EXPECT_EQ(Of(creation.feature).name, L"OUTLINE");

  Redraw(creation.feature,
         [](ProSection section) { EXPECT_EQ(support::AddLine(section, 0, 0, 1, 0), 1) << "the first id"; });
}

TEST_F(SketchFeatureTest, RedefinitionCompletesItWithCurvesAndDatumPoints) {
  const ProFeature sketch = Sketch(*part_, L"OUTLINE", L"FRONT", [](ProSection section) {
    const int seed = support::AddPoint(section, 0, 0);
    EXPECT_EQ(ProSectionEntityConstructionSet(section, seed, PRO_B_TRUE), PRO_TK_NO_ERROR);
  });
  EXPECT_FALSE(Of(sketch).incomplete) << "construction geometry alone is complete";
  EXPECT_EQ(ItemsOf(sketch, PRO_POINT), 0);
  Redraw(sketch, [](ProSection section) {
    support::AddPoint(section, 5, 5);
    support::AddLine(section, 0, 0, 10, 0);
    support::AddCircle(section, 20, 0, 4);
  });
  EXPECT_EQ(ItemsOf(sketch, PRO_POINT), 1);
  EXPECT_EQ(ItemsOf(sketch, PRO_CURVE), 2);
  EXPECT_FALSE(part_->topology.mass);
}

TEST_F(SketchFeatureTest, TakesTheSectionOfAnotherTree) {
  ProFeature drawn =
      Sketch(*part_, L"DRAWN", L"FRONT", [](ProSection section) { support::AddLine(section, 0, 0, 10, 0); });
  ProFeature empty = Incomplete(L"EMPTY", L"TOP").feature;
  ProElement from = nullptr, to = nullptr;
  ProBoolean incomplete = PRO_B_FALSE;
  ASSERT_EQ(ProFeatureElemtreeExtract(&drawn, nullptr, PRO_FEAT_EXTRACT_NO_OPTS, &from), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProFeatureElemtreeExtract(&empty, nullptr, PRO_FEAT_EXTRACT_NO_OPTS, &to), PRO_TK_NO_ERROR);
  const ProElement sketcher = HandleInTree(*UseElement(to)->node->Child(447)->Child(458));
  ProSection own = nullptr;
  ASSERT_EQ(ProSection2DAlloc(&own), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElementSpecialvalueSet(sketcher, own), PRO_TK_INVALID_PTR) << "no section of a tree";
  EXPECT_EQ(ProElementSpecialvalueSet(sketcher, support::SectionIn(from)), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProFeatureElemtreeFree(&drawn, from), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProFeatureIsIncomplete(&empty, &incomplete), PRO_TK_NO_ERROR);
  EXPECT_EQ(incomplete, PRO_B_TRUE);
  EXPECT_EQ(Redefine(empty, to).status, PRO_TK_NO_ERROR);
  EXPECT_EQ(ProFeatureIsIncomplete(&empty, &incomplete), PRO_TK_NO_ERROR);
  EXPECT_EQ(incomplete, PRO_B_FALSE);
  EXPECT_EQ(ItemsOf(empty, PRO_CURVE), 1);
  EXPECT_EQ(ProFeatureElemtreeFree(&empty, to), PRO_TK_NO_ERROR);
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

TEST_F(SketchFeatureTest, ItsPlaneHasTheNormalAndTheAxesOfTheTemplate) {
  struct Case {
    const wchar_t* plane;
    Vector3 x, y, normal;
  };
  const Case cases[] = {{L"FRONT", {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                        {L"TOP", {1, 0, 0}, {0, 0, -1}, {0, 1, 0}},
                        {L"RIGHT", {0, 0, -1}, {0, 1, 0}, {1, 0, 0}}};
  for (const Case& expected : cases) {
    const PlaneFrame plane = Of(Incomplete(expected.plane, expected.plane).feature).plane;
    EXPECT_EQ(plane.x, expected.x) << expected.plane;
    EXPECT_EQ(plane.y, expected.y) << expected.plane;
    EXPECT_EQ(plane.Normal(), expected.normal) << expected.plane;
  }
}

TEST_F(SketchFeatureTest, TakenNameIsIgnored) {
  EXPECT_EQ(Of(Incomplete(L"One", L"FRONT").feature).name, L"One");
  EXPECT_EQ(Of(Incomplete(L"ONE", L"FRONT").feature).name, L"");
  EXPECT_EQ(Of(Incomplete(L"front", L"FRONT").feature).name, L"");
}

TEST_F(SketchFeatureTest, WrongTreesAreRefused) {
  const ProModelitem right = PlaneOf(*part_, L"RIGHT");
  const ProModelitem front = PlaneOf(*part_, L"FRONT");
  const ProModelitem feature{PRO_FEATURE, part_->OwnerOf(front.type, front.id)->id, part_};
  const struct {
    const char* what;
    ProModelitem plane, reference;
    int orientation = 4;
    int left_out = 0;
    int added_to_setup = 0;
  } cases[] = {
      {"parallel reference", front, front},         {"unknown orientation", front, right, 3},
      {"feature as plane", feature, right},         {"no plane", front, right, 4, 451},
      {"unknown element", front, right, 4, 0, 436}, {"element twice", front, right, 4, 0, 452},
  };
  const std::string before = Snapshot(*part_);
  for (const auto& wrong : cases) {
    Tree tree(wrong.left_out);
    tree.Integer(tree.Root(), 387, 949);
    tree.Integer(tree.Root(), 511, 0);
    const ProElement setup = tree.Compound(tree.Compound(tree.Root(), 447), 450);
    FillSetup(tree, setup, wrong.plane, wrong.reference, wrong.orientation);
    if (wrong.added_to_setup) tree.Integer(setup, wrong.added_to_setup, 1);
    const Creation creation = Create(*part_, tree.Root(), 2);
    EXPECT_NE(creation.status, PRO_TK_NO_ERROR) << wrong.what;
    EXPECT_GT(creation.errors, 0) << wrong.what;
    EXPECT_EQ(Snapshot(*part_), before) << wrong.what;
  }
}

TEST_F(SketchFeatureTest, StandsOnAPlanarFaceOfASolid) {
  ASSERT_EQ(Extrude(*part_, Plate(), {}).status, PRO_TK_NO_ERROR);
  // The face at the far end, z = 10.
  const auto top =
      std::ranges::find_if(part_->topology.faces, [](const FaceInfo& face) { return face.normal[2] > 0.5; });
  ASSERT_NE(top, part_->topology.faces.end());

  Tree tree;
  tree.Integer(tree.Root(), 387, 949);
  tree.Integer(tree.Root(), 511, 0);
  const ProElement setup = tree.Compound(tree.Compound(tree.Root(), 447), 450);
  FillSetup(tree, setup, {PRO_SURFACE, part_->ids_of_keys.at(top->key), part_}, PlaneOf(*part_, L"RIGHT"));
  const Creation creation = Create(*part_, tree.Root(), 2);
  ASSERT_EQ(creation.status, PRO_TK_NO_ERROR);
  const Vector3& origin = Of(creation.feature).plane.origin;
  EXPECT_NEAR(origin[0], 0, 1e-9);
  EXPECT_NEAR(origin[1], 0, 1e-9);
  EXPECT_NEAR(origin[2], 10, 1e-9);
  EXPECT_NEAR(Of(creation.feature).plane.Normal()[2], 1, 1e-9);
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

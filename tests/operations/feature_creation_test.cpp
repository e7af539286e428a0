// Handing a tree to the host, and the references that a tree holds.
#include "addin/ops/feature/creation.h"

#include <gmock/gmock.h>

#include "addin/host/element_tree_builder.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/feature_test.h"
#include "tests/support/captured_log.h"

namespace vek::support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FeatureCreation : public FeatureTest {
 protected:
  ProModelitem Plane(const wchar_t* name) {
    for (const bench::GeometryItem& item : FeatureNamed(name)->items)
      if (item.type == PRO_DATUM_PLANE) return {PRO_DATUM_PLANE, item.id, bench::Handle(Current())};
    return {};
  }

  // A sketched curve on FRONT without a section: a tree that makes an incomplete feature.
  ElementTreeBuilder CurveTree() {
    ElementTreeBuilder tree(386, L"");
    tree.Integer(tree.Root(), 387, 949);
    tree.Integer(tree.Root(), 511, 0);
    const auto section = tree.Compound(tree.Root(), 447);
    const auto setup = tree.Compound(section, 450);
    tree.Reference(setup, 451, Plane(L"FRONT"));
    tree.Integer(setup, 452, 1);
    tree.Integer(setup, 454, 4);
    tree.Reference(setup, 455, Plane(L"RIGHT"));
    EXPECT_TRUE(tree.ok());
    return tree;
  }

  CreoMcpOperationResult Create(ProElement tree, ProFeature& feature, bool regenerate) {
    return feature::CreateFeatureFromTree(bench::Handle(Current()), tree, 2, L"curve", feature, regenerate);
  }
};

TEST_F(FeatureCreation, ATreeBecomesAFeatureAndStaysTheCallers) {
  ElementTreeBuilder tree = CurveTree();
  const auto mark = host().journal.Mark();
  ProFeature feature{};
  const auto result = Create(tree.tree(), feature, true);
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.message, L"");
  EXPECT_EQ(result.dataJson, L"null");
  EXPECT_THAT(CallsSince(mark), ElementsAre("ProMdlToModelitem", "ProSelectionAlloc", "ProArrayAlloc",
                                            "ProFeatureWithoptionsCreate", "ProSolidRegenerate",
                                            "ProWindowRepaint", "ProArrayFree", "ProSelectionFree"));
  EXPECT_EQ(CountCaptured(Format(L"Feature Create [curve]: status=0 errCount=0 featId=%d", feature.id)), 1);
  ASSERT_EQ(Current().features.back()->id, feature.id);
  EXPECT_TRUE(Current().features.back()->incomplete);
  // The same tree serves a second time, and is not regenerated where that isn't asked for.
  const auto second_mark = host().journal.Mark();
  ProFeature second{};
  EXPECT_TRUE(Create(tree.tree(), second, false).success);
  EXPECT_NE(second.id, feature.id);
  EXPECT_THAT(CallsSince(second_mark, {"ProSolidRegenerate", "ProWindowRepaint"}), IsEmpty());
}

TEST_F(FeatureCreation, EachFailureHasItsMessageAndMakesNothing) {
  ElementTreeBuilder tree = CurveTree();
  const std::pair<const char*, const wchar_t*> cases[] = {
      {"ProMdlToModelitem", L"Failed to select the active part for feature creation."},
      {"ProSelectionAlloc", L"Failed to select the active part for feature creation."},
      {"ProArrayAlloc", L"Failed to allocate feature create options."},
      {"ProFeatureWithoptionsCreate", L"Creo could not create the curve feature (status=-8, errors=0)."},
  };
  const ModelState before = State();
  for (const auto& [call, message] : cases) {
    faults().Fail(call, PRO_TK_BAD_CONTEXT);
    ProFeature feature{};
    EXPECT_EQ(EncodeUtf8(Create(tree.tree(), feature, true).message), EncodeUtf8(message));
    EXPECT_EQ(State(), before);
  }
  EXPECT_EQ(CountCaptured(L"Feature Create [curve]: status=-8 errCount=0 featId=0"), 1);
}

TEST_F(FeatureCreation, ReferencesLiveBesideTheirTreeAndAreFreedBehindIt) {
  const ProModelitem front = Plane(L"FRONT"), top = Plane(L"TOP");
  const auto mark = host().journal.Mark();
  {
    ElementTreeBuilder tree(386, L"");
    tree.Reference(tree.Root(), 2018, front);
    tree.ReferenceBySelection(tree.Root(), 4902, front);
    tree.References(tree.Root(), 73, std::vector{front, top});
    EXPECT_TRUE(tree.ok());
  }
  EXPECT_THAT(CallsSince(mark),
              ElementsAre("ProElementAlloc",
                          // The single reference,
                          "ProReferenceAlloc", "ProReferenceSet", "ProElementAlloc", "ProElementReferenceSet",
                          "ProElemtreeElementAdd",
                          // the one by way of a selection,
                          "ProSelectionAlloc", "ProSelectionToReference", "ProElementAlloc",
                          "ProElementReferenceSet", "ProElemtreeElementAdd",
                          // and the two in one element.
                          "ProArrayAlloc", "ProReferenceAlloc", "ProReferenceSet", "ProArrayObjectAdd",
                          "ProReferenceAlloc", "ProReferenceSet", "ProArrayObjectAdd", "ProElementAlloc",
                          "ProElementReferencesSet", "ProElemtreeElementAdd", "ProArrayFree",
                          // The tree goes first.
                          "ProElementFree", "ProReferenceFree", "ProReferenceFree", "ProReferenceFree",
                          "ProReferenceFree", "ProSelectionFree"));
}

TEST_F(FeatureCreation, ARowOfReferencesThatFailsAnswersWithTheStatusOfItsValueAlone) {
  enum Way { kReference, kBySelection, kSeveral };
  const struct {
    Way way;
    const char* call;
    int occurrence;
    int status;
  } cases[] = {
      {kReference, "ProReferenceSet", 1, -1},
      {kReference, "ProElementReferenceSet", 1, -8},
      {kReference, "ProElemtreeElementAdd", 1, -1},
      {kBySelection, "ProSelectionAlloc", 1, -1},
      {kBySelection, "ProSelectionToReference", 1, -1},
      {kBySelection, "ProElementReferenceSet", 1, -8},
      {kSeveral, "ProArrayAlloc", 1, -1},
      {kSeveral, "ProReferenceSet", 2, -1},
      {kSeveral, "ProArrayObjectAdd", 2, -1},
      {kSeveral, "ProElementReferencesSet", 1, -8},
  };
  const ProModelitem front = Plane(L"FRONT"), top = Plane(L"TOP");
  for (const auto& [way, call, occurrence, status] : cases) {
    SCOPED_TRACE(std::to_string(way) + " " + call);
    ElementTreeBuilder tree(386, L"");
    tree.OnFailure(L"No reference.");
    faults().Clear();
    faults().Fail(call, PRO_TK_BAD_CONTEXT, occurrence);
    if (way == kReference) tree.Reference(tree.Root(), 2018, front);
    if (way == kBySelection) tree.ReferenceBySelection(tree.Root(), 4902, front);
    if (way == kSeveral) tree.References(tree.Root(), 73, std::vector{front, top});
    EXPECT_FALSE(tree.ok());
    EXPECT_EQ(static_cast<int>(tree.status()), status);
    EXPECT_EQ(EncodeUtf8(tree.message()), "No reference.");
    // No further row is taken.
    const auto mark = host().journal.Mark();
    tree.Integer(tree.Root(), 387, 949);
    EXPECT_THAT(CallsSince(mark), IsEmpty());
  }
}

}  // namespace
}  // namespace vek::support

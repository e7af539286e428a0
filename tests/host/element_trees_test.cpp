#include <ProArray.h>
#include <ProElement.h>
#include <ProReference.h>
#include <ProSelection.h>
#include <gmock/gmock.h>

#include <limits>

#include "bench/host/calls/element_handles.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::Tree;
using testing::ElementsAre;
using testing::HasSubstr;

class ElementTreesTest : public support::BenchTest {
 protected:
  ProElement Allocate(int id) {
    ProElement element = nullptr;
    EXPECT_EQ(ProElementAlloc(id, &element), PRO_TK_NO_ERROR);
    return element;
  }
  // What stands under an element, by id.
  std::vector<int> ChildrenOf(ProElement element) {
    ProElement* children = nullptr;
    EXPECT_EQ(ProElementChildrenGet(element, nullptr, &children), PRO_TK_NO_ERROR);
    ProArray array = children;
    int count = 0;
    EXPECT_EQ(ProArraySizeGet(array, &count), PRO_TK_NO_ERROR);
    std::vector<int> ids(count);
    for (int i = 0; i < count; ++i) EXPECT_EQ(ProElementIdGet(children[i], &ids[i]), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
    return ids;
  }
};

TEST_F(ElementTreesTest, TakeOnlyFiniteValuesOfTheirKind) {
  ProElement integer = Allocate(387), number = Allocate(434), text = Allocate(1964), compound = Allocate(447);
  ProElement plane = Allocate(451), matrix = Allocate(4309);
  wchar_t name[] = L"NAME";
  const ProError no = PRO_TK_INVALID_TYPE, yes = PRO_TK_NO_ERROR;
  EXPECT_EQ(ProElementIntegerSet(integer, 917), yes);
  EXPECT_EQ(ProElementDoubleSet(integer, 917), no);
  EXPECT_EQ(ProElementDoubleSet(number, 1.5), yes);
  EXPECT_EQ(ProElementIntegerSet(number, 1), no);
  EXPECT_EQ(ProElementWstringSet(text, name), yes);
  EXPECT_EQ(ProElementIntegerSet(text, 1), no);
  EXPECT_EQ(ProElementWstringSet(compound, name), no);
  for (const double value :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
    EXPECT_EQ(ProElementDoubleSet(number, value), PRO_TK_BAD_INPUTS);
  ProReference unset = nullptr;
  ASSERT_EQ(ProReferenceAlloc(&unset), yes);
  EXPECT_EQ(ProElementReferenceSet(plane, unset), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProReferenceFree(unset), yes);
  int whole = 0;
  double value = 0;
  EXPECT_EQ(ProElementIntegerGet(plane, &whole), PRO_TK_E_NOT_FOUND) << "nothing set yet";
  EXPECT_EQ(ProElementDoubleGet(integer, &value), no);
  ProMatrix turn{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {1, 2, 3, 1}};
  EXPECT_EQ(ProFeatureD3elemMatrixSet(number, turn), no);
  EXPECT_EQ(ProFeatureD3elemMatrixSet(matrix, turn), yes);
  EXPECT_EQ(std::get<Matrix>(UseElement(matrix)->node->value)[3][1], 2);
  turn[2][2] = std::numeric_limits<double>::infinity();
  EXPECT_EQ(ProFeatureD3elemMatrixSet(matrix, turn), PRO_TK_BAD_INPUTS);
  for (ProElement* element : {&integer, &number, &text, &compound, &plane, &matrix})
    EXPECT_EQ(ProElementFree(element), yes);
}

TEST_F(ElementTreesTest, LetElementsGoToTheirCallersAndKeepTheOthersInTheirOrder) {
  Tree tree;
  const ProElement depth = tree.Compound(tree.Root(), 515);
  for (const int repeated : {429, 428, 429}) tree.Compound(depth, repeated);
  ProElempathItem items[2] = {{PRO_ELEM_PATH_ITEM_ID, {515}}, {PRO_ELEM_PATH_ITEM_ID, {428}}};
  ProElempath path = nullptr;
  ProElement removed = nullptr;
  ASSERT_EQ(ProElempathAlloc(&path), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProElempathDataSet(path, items, 2), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElemtreeElementRemove(tree.Root(), nullptr, &removed), PRO_TK_BAD_INPUTS) << "the root";
  EXPECT_EQ(ProElemtreeElementRemove(tree.Root(), path, &removed), PRO_TK_NO_ERROR);
  EXPECT_THAT(ChildrenOf(depth), ElementsAre(429, 429));
  EXPECT_EQ(host().ledger.Outstanding().at(HandleKind::kElement), 3) << "the tree's two roots and this";
  ProElement again = nullptr;
  EXPECT_EQ(ProElemtreeElementRemove(tree.Root(), path, &again), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(ProElementFree(&removed), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElempathFree(&path), PRO_TK_NO_ERROR);
}

TEST_F(ElementTreesTest, RefuseWhatIsNoTree) {
  Tree tree;
  const ProElement section = tree.Compound(tree.Root(), 447);
  EXPECT_EQ(ProElemtreeElementAdd(tree.Root(), nullptr, section), PRO_TK_E_FOUND) << "added a second time";
  EXPECT_EQ(ProElemtreeElementAdd(section, nullptr, tree.Root()), PRO_TK_BAD_INPUTS) << "a circle";
  ProElement integer = Allocate(387), child = Allocate(388);
  EXPECT_EQ(ProElemtreeElementAdd(integer, nullptr, child), PRO_TK_INVALID_TYPE) << "under a value";
  EXPECT_EQ(ProElementFree(&integer), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElementFree(&child), PRO_TK_NO_ERROR);
}

TEST_F(ElementTreesTest, ElementOfATreeIsFreedWithTheTreeAndFreedAndForeignOnesAreViolations) {
  ProElement root = Allocate(386), child = Allocate(447), other = Allocate(447);
  ASSERT_EQ(ProElemtreeElementAdd(root, nullptr, child), PRO_TK_NO_ERROR);
  ProElement mine = child, freed = other;
  EXPECT_EQ(ProElementFree(&mine), PRO_TK_BAD_CONTEXT);
  EXPECT_EQ(ProElementFree(&other), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElemtreeElementAdd(root, nullptr, freed), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProElementFree(&freed), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProElementIntegerSet(reinterpret_cast<ProElement>(&freed), 1), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProElementFree(&root), PRO_TK_NO_ERROR);
  EXPECT_EQ(root, nullptr);
  int id = 0;
  EXPECT_EQ(ProElementIdGet(child, &id), PRO_TK_INVALID_PTR);
  EXPECT_THAT(TakeViolations(), ElementsAre(HasSubstr("ProElementFree"), HasSubstr("ProElemtreeElementAdd"),
                                            HasSubstr("ProElementFree"), HasSubstr("ProElementIntegerSet"),
                                            HasSubstr("ProElementIdGet")));
}

class ReferencesTest : public support::BenchTest {
 protected:
  void SetUp() override {
    BenchTest::SetUp();
    part_ = &NewPart(L"GROUND");
    plane_ = {PRO_FEATURE, part_->features.front()->id, part_};
  }

  Model* part_ = nullptr;
  ProModelitem plane_{};
};

TEST_F(ReferencesTest, SelectionsNameOnlyWhatIsThere) {
  ProSelection selection = nullptr;
  ProModelitem gone = plane_;
  gone.id = 4711;
  ProModelitem of_nobody = plane_;
  of_nobody.owner = nullptr;
  ProModelitem wrong_type = plane_;
  wrong_type.type = PRO_SURFACE;
  for (ProModelitem item : {gone, of_nobody, wrong_type})
    EXPECT_EQ(ProSelectionAlloc(nullptr, &item, &selection), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(selection, nullptr);
}

TEST_F(ReferencesTest, LeadBackToWhatTheyReferTo) {
  ProElement element = nullptr;
  ProReference set = nullptr, got = nullptr;
  ProSelection selection = nullptr;
  ProModelitem item{};
  ASSERT_EQ(ProElementAlloc(451, &element), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProReferenceAlloc(&set), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElementReferenceGet(element, nullptr, &got), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(ProReferenceToSelection(set, &selection), PRO_TK_BAD_INPUTS) << "refers to nothing yet";
  ASSERT_EQ(ProReferenceSet(set, nullptr, &plane_), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProElementReferenceSet(element, set), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProReferenceFree(set), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElementReferenceGet(element, nullptr, &got), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProReferenceToSelection(got, &selection), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSelectionModelitemGet(selection, &item), PRO_TK_NO_ERROR);
  EXPECT_EQ(item.id, plane_.id);
  EXPECT_EQ(item.owner, plane_.owner);
  part_->features.erase(part_->features.begin());
  ProReference none = nullptr;
  EXPECT_EQ(ProSelectionToReference(selection, &none), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(ProSelectionFree(&selection), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProReferenceToSelection(got, &selection), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(ProReferenceFree(got), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElementFree(&element), PRO_TK_NO_ERROR);
}

TEST_F(ReferencesTest, FreedAndMistakenHandlesAreViolations) {
  ProSelection selection = nullptr;
  ProReference reference = nullptr;
  ASSERT_EQ(ProSelectionAlloc(nullptr, &plane_, &selection), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProReferenceAlloc(&reference), PRO_TK_NO_ERROR);
  ProSelection freed = selection;
  auto mistaken = reinterpret_cast<ProSelection>(reference);
  ProSelection copy = nullptr;
  EXPECT_EQ(ProSelectionFree(&selection), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSelectionCopy(freed, &copy), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProSelectionFree(&mistaken), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProReferenceFree(reference), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProReferenceSet(reference, nullptr, &plane_), PRO_TK_INVALID_PTR);
  EXPECT_THAT(TakeViolations(), ElementsAre(HasSubstr("ProSelectionCopy"), HasSubstr("ProSelectionFree"),
                                            HasSubstr("ProReferenceSet")));
}

}  // namespace
}  // namespace bench

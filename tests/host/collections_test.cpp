#include <ProArray.h>
#include <ProReference.h>
#include <ProSelection.h>
#include <gmock/gmock.h>

#include "bench/host/calls/element_handles.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr ProError kYes = PRO_TK_NO_ERROR;

class CollectionsTest : public support::FeatureTest {
 protected:
  ProReference Refer(ProModelitem item) {
    ProReference reference = nullptr;
    EXPECT_EQ(ProReferenceAlloc(&reference), kYes);
    EXPECT_EQ(ProReferenceSet(reference, nullptr, &item), kYes);
    return reference;
  }
  ProCollection NewCurves() {
    ProCollection collection = nullptr;
    EXPECT_EQ(ProCrvcollectionAlloc(&collection), kYes);
    return collection;
  }
  ProCrvcollinstr NewInstruction(int type) {
    ProCrvcollinstr instruction = nullptr;
    EXPECT_EQ(ProCrvcollinstrAlloc(static_cast<ProCrvcollinstrType>(type), &instruction), kYes);
    return instruction;
  }
  ProError AddReference(ProCrvcollinstr instruction, ProModelitem item) {
    const ProReference reference = Refer(item);
    const ProError status = ProCrvcollinstrReferenceAdd(instruction, reference);
    EXPECT_EQ(ProReferenceFree(reference), kYes);
    return status;
  }
  void Add(ProCollection collection, int type, ProModelitem item) {
    const ProCrvcollinstr instruction = NewInstruction(type);
    EXPECT_EQ(AddReference(instruction, item), kYes);
    EXPECT_EQ(ProCrvcollectionInstructionAdd(collection, instruction), kYes);
  }
  // The ids of the curves and edges that come of a collection.
  std::vector<int> Regenerate(ProCollection collection) {
    ProSelection* selections = nullptr;
    int count = 0;
    EXPECT_EQ(ProCrvcollectionRegenerate(collection, &selections, &count), kYes);
    std::vector<int> ids;
    for (int i = 0; i < count; ++i) {
      ProModelitem item{};
      EXPECT_EQ(ProSelectionModelitemGet(selections[i], &item), kYes);
      ids.push_back(item.id);
    }
    EXPECT_EQ(ProSelectionarrayFree(selections), kYes);
    return ids;
  }
  std::vector<int> CurvesOf(const ProFeature& sketch) {
    std::vector<int> ids;
    for (const GeometryItem& item : part_->FindFeature(sketch.id)->items)
      if (item.type == PRO_CURVE) ids.push_back(item.id);
    return ids;
  }
};

TEST_F(CollectionsTest, CurveInstructionsGiveEachItemOnce) {
  const ProFeature plate = Plate();
  const auto sides = CurvesOf(plate);
  ASSERT_EQ(sides.size(), 4u);
  ProCollection collection = NewCurves();
  ProSelection* selections = nullptr;
  int count = 0;
  EXPECT_EQ(ProCrvcollectionRegenerate(collection, &selections, &count), PRO_TK_E_NOT_FOUND);
  Add(collection, 101, {PRO_CURVE, sides[2], Handle(*part_)});
  Add(collection, 108, plate);
  EXPECT_EQ(ProCrvcollectionInstructionAdd(collection, NewInstruction(114)), kYes);
  EXPECT_THAT(Regenerate(collection), ElementsAre(sides[2], sides[0], sides[1], sides[3]));
  EXPECT_EQ(ProCollectionFree(&collection), kYes);
}

TEST_F(CollectionsTest, TakeOnlyWhatMakesSense) {
  const ProFeature plate = Plate();
  const ProModelitem curve{PRO_CURVE, CurvesOf(plate).front(), Handle(*part_)};
  ProCrvcollinstr refused = nullptr;
  ProSrfcollinstr surfaces = nullptr;
  for (const int type : {100, 102, 999})
    EXPECT_EQ(ProCrvcollinstrAlloc(static_cast<ProCrvcollinstrType>(type), &refused), PRO_TK_BAD_INPUTS);
  for (const int type : {2, 3, 101})
    EXPECT_EQ(ProSrfcollinstrAlloc(static_cast<ProSrfcollinstrType>(type), PRO_B_TRUE, &surfaces),
              PRO_TK_BAD_INPUTS);

  ProCollection curves = NewCurves(), shell = nullptr;
  ASSERT_EQ(ProSrfcollectionAlloc(&shell), kYes);
  const ProCrvcollinstr single = NewInstruction(101), all = NewInstruction(108), end = NewInstruction(114);
  EXPECT_EQ(ProCrvcollectionInstructionAdd(curves, single), PRO_TK_BAD_INPUTS) << "no reference yet";
  EXPECT_EQ(AddReference(single, plate), PRO_TK_INVALID_TYPE);
  EXPECT_EQ(AddReference(all, curve), PRO_TK_INVALID_TYPE);
  EXPECT_EQ(AddReference(end, curve), PRO_TK_INVALID_TYPE);
  EXPECT_EQ(AddReference(single, curve), kYes);
  EXPECT_EQ(AddReference(single, curve), PRO_TK_E_FOUND);
  EXPECT_EQ(ProCrvcollectionInstructionAdd(shell, single), PRO_TK_INVALID_TYPE);
  EXPECT_EQ(ProCrvcollectionInstructionAdd(curves, single), kYes);
  EXPECT_EQ(ProCrvcollectionInstructionAdd(curves, single), PRO_TK_E_FOUND);
  for (const ProCrvcollinstr instruction : {all, end}) EXPECT_EQ(ProCrvcollinstrFree(instruction), kYes);
  EXPECT_EQ(ProCollectionFree(&curves), kYes);
  EXPECT_EQ(ProCollectionFree(&shell), kYes);
}

TEST_F(CollectionsTest, BelongToWhatTheyWereAddedTo) {
  ProCollection collection = NewCurves();
  const ProCrvcollinstr end = NewInstruction(114), other = NewInstruction(114);
  ASSERT_EQ(ProCrvcollectionInstructionAdd(collection, end), kYes);
  EXPECT_EQ(ProCrvcollinstrFree(end), PRO_TK_INVALID_PTR);
  ProCollection freed = collection;
  EXPECT_EQ(ProCollectionFree(&collection), kYes);
  EXPECT_EQ(collection, nullptr);
  EXPECT_EQ(ProCrvcollectionInstructionAdd(freed, other), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProCollectionFree(&freed), PRO_TK_INVALID_PTR);
  EXPECT_EQ(ProCrvcollinstrFree(other), kYes);
  EXPECT_THAT(host().ledger.Outstanding(), IsEmpty());
  EXPECT_THAT(TakeViolations(), ElementsAre(HasSubstr("frees an already freed curve instruction"),
                                            HasSubstr("uses a freed handle as collection"),
                                            HasSubstr("frees an already freed collection")));
}

TEST_F(CollectionsTest, GoIntoElementsWithAllThatIsInThem) {
  const ProModelitem right = PlaneOf(*part_, L"RIGHT");
  const ProReference reference = Refer(right);
  ProCollection collection = nullptr;
  ProSrfcollinstr single = nullptr;
  ProSrfcollref surface = nullptr;
  ASSERT_EQ(ProSrfcollectionAlloc(&collection), kYes);
  ASSERT_EQ(ProSrfcollinstrAlloc(static_cast<ProSrfcollinstrType>(1), PRO_B_FALSE, &single), kYes);
  EXPECT_EQ(ProSrfcollinstrIncludeSet(single, PRO_B_TRUE), kYes);
  EXPECT_EQ(ProSrfcollectionInstructionAdd(collection, single), PRO_TK_BAD_INPUTS) << "no surface yet";
  ASSERT_EQ(ProSrfcollrefAlloc(static_cast<ProSrfcollrefType>(1), reference, &surface), kYes);
  EXPECT_EQ(ProSrfcollinstrReferenceAdd(single, surface), kYes);
  EXPECT_EQ(ProReferenceFree(reference), kYes);
  EXPECT_EQ(ProSrfcollectionInstructionAdd(collection, single), kYes);

  ProElement element = nullptr, integer = nullptr;
  ASSERT_EQ(ProElementAlloc(2213, &element), kYes);
  ASSERT_EQ(ProElementAlloc(387, &integer), kYes);
  EXPECT_EQ(ProElementCollectionSet(integer, collection), PRO_TK_INVALID_TYPE);
  EXPECT_EQ(ProElementCollectionSet(element, collection), kYes);
  const CollectionInstruction& held =
      std::get<Collection>(UseElement(element)->node->value).instructions.at(0);
  EXPECT_TRUE(held.include);
  EXPECT_EQ(held.items.at(0).id, right.id);

  // The collection is the tree's, and freeing it all the same is no mistake, even behind the tree.
  EXPECT_EQ(ProElementFree(&element), kYes);
  EXPECT_EQ(ProElementFree(&integer), kYes);
  EXPECT_THAT(host().ledger.Outstanding(), IsEmpty());
  EXPECT_EQ(ProCollectionFree(&collection), kYes);
}

}  // namespace
}  // namespace bench

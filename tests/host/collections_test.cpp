// Arrays, and collections of curves and surfaces.
#include <ProArray.h>
#include <ProReference.h>
#include <ProSelection.h>
#include <gmock/gmock.h>

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
};

TEST_F(CollectionsTest, TakeOnlyWhatMakesSense) {
  const ProFeature plate = Plate();
  const ProModelitem curve{PRO_CURVE, ItemOf(PRO_CURVE, "").id, part_};
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

TEST_F(CollectionsTest, OfAnElementAreItsTrees) {
  const ProReference reference = Refer(PlaneOf(*part_, L"RIGHT"));
  ProCollection collection = nullptr;
  ProSrfcollinstr single = nullptr;
  ProSrfcollref surface = nullptr;
  ASSERT_EQ(ProSrfcollectionAlloc(&collection), kYes);
  ASSERT_EQ(ProSrfcollinstrAlloc(static_cast<ProSrfcollinstrType>(1), PRO_B_FALSE, &single), kYes);
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
  // The collection is the tree's, and freeing it all the same is no mistake, even behind the tree.
  EXPECT_EQ(ProElementFree(&element), kYes);
  EXPECT_EQ(ProElementFree(&integer), kYes);
  EXPECT_THAT(host().ledger.Outstanding(), IsEmpty());
  EXPECT_EQ(ProCollectionFree(&collection), kYes);
}

class ArraysTest : public support::BenchTest {
 protected:
  ProArray Allocate(int count, int reallocation = 1) {
    ProArray array = nullptr;
    EXPECT_EQ(ProArrayAlloc(count, sizeof(int), reallocation, &array), PRO_TK_NO_ERROR);
    return array;
  }
  std::vector<int> Contents(ProArray array) {
    int count = -1;
    EXPECT_EQ(ProArraySizeGet(array, &count), PRO_TK_NO_ERROR);
    const int* first = static_cast<int*>(array);
    return {first, first + count};
  }
};

TEST_F(ArraysTest, StartWithZeroesAndTakeObjectsAtTheirPlaceAndAtTheEnd) {
  ProArray array = Allocate(2);
  int numbers[] = {1, 2, 5, 3, 4};
  EXPECT_EQ(ProArrayObjectAdd(&array, -1, 3, numbers), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProArrayObjectAdd(&array, 4, 2, numbers + 3), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProArrayObjectAdd(&array, 0, 1, numbers + 4), PRO_TK_NO_ERROR);
  EXPECT_THAT(Contents(array), ElementsAre(4, 0, 0, 1, 2, 3, 4, 5));
  EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
  EXPECT_EQ(array, nullptr);
}

TEST_F(ArraysTest, RefuseSenselessRequests) {
  ProArray array = nullptr;
  EXPECT_EQ(ProArrayAlloc(-1, 4, 1, &array), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProArrayAlloc(1, 0, 1, &array), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProArrayAlloc(1, 4, 0, &array), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProArrayAlloc(1'000'000'000, 8, 1, &array), PRO_TK_OUT_OF_MEMORY);
  array = Allocate(2);
  int number = 0;
  EXPECT_EQ(ProArrayObjectAdd(&array, 3, 1, &number), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProArrayObjectAdd(&array, -2, 1, &number), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProArrayObjectAdd(&array, 0, 0, &number), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
}

TEST_F(ArraysTest, FreedTwiceOrForeignAreViolations) {
  ProArray array = Allocate(1);
  ProArray again = array;
  EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProArrayFree(&again), PRO_TK_INVALID_PTR);
  int mine = 0;
  int count = 0;
  EXPECT_EQ(ProArraySizeGet(&mine, &count), PRO_TK_INVALID_PTR);
  EXPECT_THAT(TakeViolations(), ElementsAre(HasSubstr("ProArrayFree"), HasSubstr("ProArraySizeGet")));
}

}  // namespace
}  // namespace bench

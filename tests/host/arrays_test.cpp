#include <ProArray.h>
#include <gmock/gmock.h>

#include <vector>

#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

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

TEST_F(ArraysTest, GrowFarBeyondTheirFirstRoom) {
  ProArray array = Allocate(0, 7);
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(ProArrayObjectAdd(&array, -1, 1, &i), PRO_TK_NO_ERROR);
  const auto contents = Contents(array);
  ASSERT_THAT(contents, SizeIs(1000));
  for (int i = 0; i < 1000; ++i) EXPECT_EQ(contents[i], i);
  EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
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

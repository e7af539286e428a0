#include <ProReference.h>
#include <ProSelection.h>
#include <gmock/gmock.h>

#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

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

TEST_F(ReferencesTest, CopyOfASelectionOutlivesTheFirstOne) {
  ProSelection selection = nullptr;
  ProSelection copy = nullptr;
  ProReference reference = nullptr;
  ASSERT_EQ(ProSelectionAlloc(nullptr, &plane_, &selection), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProSelectionCopy(selection, &copy), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSelectionFree(&selection), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSelectionToReference(copy, &reference), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProReferenceFree(reference), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSelectionFree(&copy), PRO_TK_NO_ERROR);
}

TEST_F(ReferencesTest, SelectionOfWhatWentAwayGivesNoReference) {
  ProSelection selection = nullptr;
  ProReference reference = nullptr;
  ASSERT_EQ(ProSelectionAlloc(nullptr, &plane_, &selection), PRO_TK_NO_ERROR);
  part_->features.erase(part_->features.begin());
  EXPECT_EQ(ProSelectionToReference(selection, &reference), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(ProSelectionFree(&selection), PRO_TK_NO_ERROR);
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

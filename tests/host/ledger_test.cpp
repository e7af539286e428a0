#include "bench/host/instruments/ledger.h"

#include <gmock/gmock.h>

namespace bench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class LedgerTest : public testing::Test {
 protected:
  Ledger ledger;
  int first = 0;
  int second = 0;
};

TEST_F(LedgerTest, OutstandingCountsByKindAndLeavesPrivateSectionsOut) {
  ledger.Give(&first, HandleKind::kSelection, "Give");
  ledger.Give(&second, HandleKind::kSection, "Give");
  EXPECT_THAT(ledger.Outstanding(), ElementsAre(Pair(HandleKind::kSelection, 1)));
  EXPECT_THAT(ledger.OutstandingWithSections(),
              ElementsAre(Pair(HandleKind::kSelection, 1), Pair(HandleKind::kSection, 1)));
}

TEST_F(LedgerTest, WhatWasPassedOnIsNoLongerTheCallersToFree) {
  ledger.Give(&first, HandleKind::kElement, "Give");
  EXPECT_TRUE(ledger.PassOn(&first, HandleKind::kElement, "Add"));
  EXPECT_THAT(ledger.Outstanding(), IsEmpty());
  EXPECT_FALSE(ledger.TakeBack(&first, HandleKind::kElement, "Free"));
  EXPECT_THAT(ledger.Violations(), ElementsAre("Free frees an already freed element"));
}

TEST_F(LedgerTest, EachMisuseIsAViolationInTheNameOfItsCall) {
  ledger.Give(&first, HandleKind::kArray, "Give");
  EXPECT_FALSE(ledger.TakeBack(&first, HandleKind::kElement, "FreeElement"));
  EXPECT_FALSE(ledger.Check(&first, HandleKind::kReference, "UseReference"));
  EXPECT_FALSE(ledger.TakeBack(&second, HandleKind::kArray, "FreeForeign"));
  EXPECT_FALSE(ledger.Check(&second, HandleKind::kArray, "UseForeign"));
  EXPECT_THAT(ledger.Outstanding(), ElementsAre(Pair(HandleKind::kArray, 1))) << "not freed by a failed free";
  ledger.TakeBack(&first, HandleKind::kArray, "Free");
  EXPECT_FALSE(ledger.TakeBack(&first, HandleKind::kArray, "FreeAgain"));
  EXPECT_FALSE(ledger.Check(&first, HandleKind::kArray, "UseFreed"));
  EXPECT_THAT(ledger.Violations(),
              ElementsAre("FreeElement frees one of kind array as element",
                          "UseReference uses one of kind array as reference",
                          "FreeForeign frees a foreign pointer as array",
                          "UseForeign uses a foreign pointer as array",
                          "FreeAgain frees an already freed array", "UseFreed uses a freed handle as array"));
}

TEST_F(LedgerTest, WhatWasTakenBackLeavesNothingAndMayBeGivenOutAgain) {
  ledger.Give(&first, HandleKind::kArray, "Give");
  EXPECT_TRUE(ledger.Check(&first, HandleKind::kArray, "Use"));
  EXPECT_TRUE(ledger.TakeBack(&first, HandleKind::kArray, "Free"));
  EXPECT_THAT(ledger.Outstanding(), IsEmpty());
  ledger.Give(&first, HandleKind::kSelection, "Give");
  EXPECT_TRUE(ledger.Check(&first, HandleKind::kSelection, "Use"));
  EXPECT_THAT(ledger.Violations(), IsEmpty());
}

}  // namespace
}  // namespace bench

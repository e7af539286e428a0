#include "bench/host/instruments/fault_plan.h"

#include <gmock/gmock.h>

namespace bench {
namespace {

using testing::ElementsAre;

// What `count` calls of that name are told: their status, or 1 for those that run as ever.
std::vector<int> Statuses(FaultPlan& plan, int count, const char* name = "Call") {
  std::vector<int> statuses;
  for (int i = 0; i < count; ++i) statuses.push_back(plan.Next(name).status.value_or(1));
  return statuses;
}

TEST(FaultPlanTest, ScriptsOfOneNameAllCountFromWhenTheyWereGiven) {
  FaultPlan plan;
  plan.Fail("Call", -1);
  plan.Fail("Call", -2, 2);
  EXPECT_THAT(Statuses(plan, 2, "Other"), ElementsAre(1, 1));
  EXPECT_THAT(Statuses(plan, 1), ElementsAre(-1));
  plan.Fail("Call", -3, 2);
  EXPECT_THAT(Statuses(plan, 3), ElementsAre(-2, -3, 1));
}

TEST(FaultPlanTest, ACallCanBeNamedByItsNumberFromNowOn) {
  FaultPlan plan;
  plan.Next("Before");
  plan.FailNumber(2, -8);
  EXPECT_EQ(plan.Next("Any").status, std::nullopt);
  EXPECT_EQ(plan.Next("Whatever").status, -8);
  EXPECT_EQ(plan.Next("Any").status, std::nullopt);
}

TEST(FaultPlanTest, ADelayHoldsForOneCallAndClearForgetsEverything) {
  FaultPlan plan;
  plan.Delay("Call", 250);
  EXPECT_EQ(plan.Next("Other").delay_ms, 0);
  EXPECT_EQ(plan.Next("Call").delay_ms, 250);
  EXPECT_EQ(plan.Next("Call").delay_ms, 0);
  plan.Fail("Call", -1);
  plan.FailNumber(1, -1);
  plan.Delay("Call", 5);
  plan.Clear();
  const auto outcome = plan.Next("Call");
  EXPECT_EQ(outcome.status, std::nullopt);
  EXPECT_EQ(outcome.delay_ms, 0);
}

}  // namespace
}  // namespace bench

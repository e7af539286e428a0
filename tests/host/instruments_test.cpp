// What the host watches its callers with: the call frame, the journal, the fault plan and the ledger.
#include <ProMdl.h>
#include <ProUI.h>
#include <gmock/gmock.h>

#include <stdexcept>
#include <thread>

#include "bench/host/instruments/call_frame.h"
#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Pair;

class CallFrameTest : public support::BenchTest {};

ProError ThrowingCall() {
  HOST_CALL(7) {
    throw std::runtime_error("no room left");
  };
}

TEST_F(CallFrameTest, CallsThatGiveBackOrReArmAreOutOfReachOfScripts) {
  char dialog[] = "DIALOG";
  support::NameBuffer name(L"TIMER");
  ProUITimer timer = 0;
  ASSERT_EQ(ProUIDialogCreate(dialog, nullptr), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProUITimerCreate([](char*, ProUITimer, ProAppData) {}, nullptr, name, &timer), PRO_TK_NO_ERROR);
  for (const char* call : {"ProUIDialogTimerStart", "ProUITimerDestroy", "ProUIDialogDestroy"})
    host().faults.Fail(call, PRO_TK_GENERAL_ERROR);
  host().faults.FailNumber(1, PRO_TK_GENERAL_ERROR);
  EXPECT_EQ(ProUIDialogTimerStart(dialog, timer, 10, PRO_B_FALSE), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProUITimerDestroy(timer), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProUIDialogDestroy(dialog), PRO_TK_NO_ERROR);
}

TEST_F(CallFrameTest, ACallFromAnotherThreadIsAViolationAndReachesNothing) {
  Model& part = NewPart(L"BOLT");
  const auto mark = host().journal.Mark();
  ProError status = PRO_TK_NO_ERROR;
  std::thread([&] { status = ProMdlErase(Handle(part)); }).join();
  EXPECT_EQ(status, PRO_TK_BAD_CONTEXT);
  EXPECT_NE(host().session.Find(Handle(part)), nullptr);
  EXPECT_THAT(host().journal.Since(mark), IsEmpty());
  EXPECT_THAT(TakeViolations(), ElementsAre("ProMdlErase was called from another thread than the main one"));
}

TEST_F(CallFrameTest, AnExceptionInACallBecomesAGeneralErrorAndAComplaint) {
  EXPECT_EQ(ThrowingCall(), PRO_TK_GENERAL_ERROR);
  EXPECT_EQ(host().journal.Last(1)[0].status, PRO_TK_GENERAL_ERROR);
  EXPECT_TRUE(Complained("ThrowingCall failed: no room left"));
  EXPECT_EQ(CurrentCall(), "the host");
}

auto Named(const std::string& name) {
  return Field(&JournalEntry::name, name);
}

TEST(JournalTest, KeepsArgumentsAndStatusAlsoOfACallInsideItsLike) {
  Journal journal;
  const auto outer = journal.Begin("Visit", "a, 1");
  const auto inner = journal.Begin("Visit", "a, 1");
  journal.End(inner, -2);
  journal.End(outer, -2);
  EXPECT_EQ(journal.LastRuns(10).size(), 2u) << "no repetition";
  const auto third = journal.Begin("Type", "");
  journal.End(third, -7);
  const auto entries = journal.Last(3);
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0].number, 1u);
  EXPECT_EQ(entries[0].arguments, "a, 1");
  EXPECT_EQ(entries[1].status, -2);
  EXPECT_EQ(entries[2].number, 3u);
  EXPECT_EQ(entries[2].status, -7);
}

TEST(JournalTest, ForgetsTheOldestBeyondItsCapacity) {
  Journal journal;
  const auto first = journal.Begin("First", "");
  for (std::size_t i = 0; i < Journal::kCapacity; ++i)
    journal.End(journal.Begin("Call", std::to_string(i)), 0);
  journal.End(first, -1);
  const auto all = journal.Last(2 * Journal::kCapacity);
  ASSERT_EQ(all.size(), Journal::kCapacity);
  EXPECT_EQ(all.front().number, 2u);
  EXPECT_EQ(all.front().status, 0);
  EXPECT_EQ(journal.Since(0).size(), Journal::kCapacity);
}

TEST(JournalTest, RepetitionPushesNothingElseOut) {
  Journal journal;
  journal.End(journal.Begin("First", ""), 0);
  for (std::size_t i = 0; i < 3 * Journal::kCapacity; ++i) journal.End(journal.Begin("Tick", "100"), 0);
  const auto runs = journal.LastRuns(Journal::kCapacity);
  ASSERT_EQ(runs.size(), 2u);
  EXPECT_EQ(runs[0].entry.name, "First");
  EXPECT_EQ(runs[1].entry.number, 2u);
  EXPECT_EQ(runs[1].times, 3 * Journal::kCapacity);
}

TEST(JournalTest, AMarkAmongRepetitionsTellsThoseBehindIt) {
  Journal journal;
  const auto make = [&journal](const char* name) { journal.End(journal.Begin(name, "x"), -1); };
  for (int i = 0; i < 3; ++i) make("Create");
  const auto mark = journal.Mark();
  EXPECT_THAT(journal.Since(mark), IsEmpty());
  for (int i = 0; i < 2; ++i) make("Create");
  make("Other");
  make("Create");

  std::vector<std::uint64_t> numbers;
  for (const JournalEntry& call : journal.Since(mark)) numbers.push_back(call.number);
  EXPECT_THAT(numbers, ElementsAre(4, 5, 6, 7));
  EXPECT_THAT(journal.Last(3), ElementsAre(Named("Create"), Named("Other"), Named("Create")));
  EXPECT_EQ(journal.Since(0).size(), 7u);
}

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

}  // namespace
}  // namespace bench

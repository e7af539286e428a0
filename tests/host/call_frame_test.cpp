#include "bench/host/instruments/call_frame.h"

#include <ProMdl.h>
#include <ProUI.h>
#include <gmock/gmock.h>

#include <stdexcept>
#include <thread>

#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CallFrameTest : public support::BenchTest {};

ProError ThrowingCall() {
  HOST_CALL(7) {
    throw std::runtime_error("no room left");
  };
}

TEST_F(CallFrameTest, AScriptedFailureAndACallWithoutEffectDoNothing) {
  Model& part = NewPart(L"BOLT");
  host().faults.NoEffect("ProMdlErase");
  EXPECT_EQ(ProMdlErase(Handle(part)), PRO_TK_NO_ERROR);
  host().faults.Fail("ProMdlErase", PRO_TK_GENERAL_ERROR);
  EXPECT_EQ(ProMdlErase(Handle(part)), PRO_TK_GENERAL_ERROR);
  EXPECT_EQ(host().journal.Last(1)[0].status, PRO_TK_GENERAL_ERROR);
  EXPECT_NE(host().session.Find(Handle(part)), nullptr);
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

}  // namespace
}  // namespace bench

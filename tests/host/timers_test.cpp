#include <ProUI.h>

#include <chrono>

#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using std::chrono::milliseconds;
using Clock = UserInterface::Clock;

// What the timer's action does each time it fires.
struct Ticks {
  int count = 0;
  bool rearm = false;
  bool fire_again_inside = false;
  std::string dialog;
};

void Tick(char* dialog, ProUITimer timer, ProAppData data) {
  auto& ticks = *static_cast<Ticks*>(data);
  ++ticks.count;
  ticks.dialog = dialog;
  if (ticks.rearm) {
    EXPECT_EQ(ProUIDialogTimerStart(dialog, timer, 0, PRO_B_FALSE), PRO_TK_NO_ERROR);
  }
  if (ticks.fire_again_inside) TheHost().ui.RunTimersOnce();
}

class TimersTest : public support::BenchTest {
 protected:
  void SetUp() override {
    BenchTest::SetUp();
    support::NameBuffer name(L"TIMER");
    ASSERT_EQ(ProUIDialogCreate(dialog, nullptr), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUITimerCreate(Tick, &ticks, name, &timer), PRO_TK_NO_ERROR);
  }
  ProError Start(long pause) { return ProUIDialogTimerStart(dialog, timer, pause, PRO_B_FALSE); }
  UserInterface& ui() { return host().ui; }

  char dialog[16] = "DIALOG";
  ProUITimer timer = 0;
  Ticks ticks;
};

TEST_F(TimersTest, ATimerFiresOnceWhenItsTimeHasCome) {
  ASSERT_EQ(Start(50), PRO_TK_NO_ERROR);
  ui().FireDue(Clock::now());
  EXPECT_EQ(ticks.count, 0);
  ui().FireDue(Clock::now() + milliseconds(60));
  EXPECT_EQ(ticks.count, 1);
  EXPECT_EQ(ticks.dialog, "DIALOG");
  ui().FireDue(Clock::now() + milliseconds(600));
  EXPECT_EQ(ticks.count, 1);
}

TEST_F(TimersTest, ATimerArmedInAnActionFiresInTheNextRoundAndNoneWhileTheActionRuns) {
  ticks.rearm = true;
  ticks.fire_again_inside = true;
  ASSERT_EQ(Start(0), PRO_TK_NO_ERROR);
  ui().RunTimersOnce();
  EXPECT_EQ(ticks.count, 1);
  ui().RunTimersOnce();
  EXPECT_EQ(ticks.count, 2);
}

TEST_F(TimersTest, ATimerRunsOnADialogThatExistsUntilEitherIsDestroyed) {
  char other[] = "OTHER";
  EXPECT_EQ(ProUIDialogTimerStart(other, timer, 0, PRO_B_FALSE), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(ProUIDialogTimerStart(dialog, timer + 1, 0, PRO_B_FALSE), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(Start(-1), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProUIDialogCreate(dialog, nullptr), PRO_TK_E_FOUND);
  ASSERT_EQ(Start(0), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProUIDialogDestroy(dialog), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProUIDialogDestroy(dialog), PRO_TK_E_NOT_FOUND);
  ui().RunTimersOnce();
  EXPECT_EQ(ticks.count, 0);

  ASSERT_EQ(ProUIDialogCreate(dialog, nullptr), PRO_TK_NO_ERROR);
  ASSERT_EQ(Start(0), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProUITimerDestroy(timer), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProUITimerDestroy(timer), PRO_TK_E_NOT_FOUND);
  ui().RunTimersOnce();
  EXPECT_EQ(ticks.count, 0);
  EXPECT_EQ(ui().TimerCount(), 0u);
}

}  // namespace
}  // namespace bench

#include "addin/shell/helper_process.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "tests/support/noting_program.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using support::NotingProgram;

std::wstring HelperPath() {
  return support::TestProgramFolder() + L"\\VekAI.Creo.AddinHelper.exe";
}

TEST(HelperProcess, TheModuleDirectoryIsThatOfTheProgramThatHoldsTheAddin) {
  EXPECT_EQ(GetModuleDirectory(), support::TestProgramFolder());
}

TEST(HelperProcess, IsNotRunWhenItIsMissing) {
  support::RemoveNotingProgram(HelperPath());
  EXPECT_FALSE(RunHelper(L"--about", true));
  EXPECT_FALSE(RunHelper(L"--check-update", false));
}

TEST(HelperProcess, IsNotRunWithoutAnArgument) {
  const NotingProgram helper(HelperPath());
  EXPECT_FALSE(RunHelper(nullptr, true));
  EXPECT_FALSE(RunHelper(L"", true));
  EXPECT_TRUE(helper.Runs().empty());
}

TEST(HelperProcess, GetsItsArgumentInTheFolderOfTheModule) {
  const NotingProgram helper(HelperPath());
  ASSERT_TRUE(RunHelper(L"--about", true));
  const auto runs = helper.Runs();
  ASSERT_EQ(runs.size(), 1u);
  EXPECT_EQ(runs[0].command_line, L"\"" + HelperPath() + L"\" --about");
  EXPECT_EQ(runs[0].directory, support::TestProgramFolder());
}

TEST(HelperProcess, IsWaitedForOnlyWhenAskedTo) {
  NotingProgram helper(HelperPath());
  helper.Hold();
  EXPECT_TRUE(RunHelper(L"--check-update", false));
  EXPECT_TRUE(helper.Runs().empty());

  std::jthread release([&] {
    std::this_thread::sleep_for(200ms);
    helper.Release();
  });
  EXPECT_TRUE(RunHelper(L"--about", true));
  // The one that was waited for has noted its call by now; the other one does so in its own time.
  EXPECT_GE(helper.Runs().size(), 1u);
  EXPECT_EQ(helper.WaitForRuns(2).size(), 2u);
}

}  // namespace
}  // namespace vek

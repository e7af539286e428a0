#include "addin/companion/companion_app.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "addin/platform/files.h"
#include "tests/support/companion_aside.h"
#include "tests/support/log_tail.h"
#include "tests/support/noting_program.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

class CompanionApp : public testing::Test {
 protected:
  void SetUp() override {
    // The program of the test before may still be on its way out.
    const auto patience = Clock::now() + 10s;
    while (IsCompanionRunning() && Clock::now() < patience) std::this_thread::sleep_for(20ms);
    ASSERT_FALSE(IsCompanionRunning());
  }

  const support::CompanionAside aside_;
  support::LogTail tail_;
};

TEST_F(CompanionApp, IsNotLaunchedWhenItIsNotInstalled) {
  EXPECT_EQ(LaunchCompanion(), 0);
  EXPECT_EQ(tail_.Messages(), std::vector<std::string>{"Failed to launch Vek app."});
}

TEST_F(CompanionApp, IsLaunchedOnceAndGivenTwoSeconds) {
  const std::wstring folder = L"C:\\Program Files\\Vek";
  ASSERT_TRUE(EnsureDirectory(folder));
  {
    support::NotingProgram companion(folder + L"\\Vek.exe");
    companion.Hold();
    const auto start = Clock::now();
    EXPECT_EQ(LaunchCompanion(), 1);
    EXPECT_GE(Clock::now() - start, 2'000ms);
    EXPECT_TRUE(IsCompanionRunning());
    EXPECT_EQ(LaunchCompanion(), -1);
    EXPECT_EQ(tail_.Messages(), (std::vector<std::string>{"Vek desktop app launched successfully",
                                                          "Vek app is already running"}));
    companion.Release();
    EXPECT_EQ(companion.WaitForRuns(1).size(), 1u);
  }
  std::filesystem::remove(std::filesystem::path(folder));
}

}  // namespace
}  // namespace vek

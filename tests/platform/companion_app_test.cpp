#include "addin/companion/companion_app.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <thread>

#include "addin/platform/files.h"
#include "addin/platform/processes.h"
#include "tests/support/companion_aside.h"
#include "tests/support/log_tail.h"
#include "tests/support/noting_program.h"
#include "tests/support/scratch_folder.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using support::NotingProgram;
using Clock = std::chrono::steady_clock;

const std::wstring kFolder = L"C:\\Program Files\\Vek";

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

TEST_F(CompanionApp, CountsFromWhicheverFolderItRuns) {
  const support::ScratchFolder folder;
  NotingProgram companion(folder / L"vek.EXE");
  companion.Hold();
  ASSERT_TRUE(RunDetached({companion.path(), L"", folder.path()}));
  EXPECT_TRUE(IsCompanionRunning());
  EXPECT_EQ(LaunchCompanion(), -1);
  EXPECT_EQ(tail_.Messages(), std::vector<std::string>{"Vek app is already running"});
}

class InstalledCompanion : public CompanionApp {
 protected:
  void SetUp() override {
    CompanionApp::SetUp();
    if (IsSkipped() || HasFatalFailure()) return;
    ASSERT_TRUE(EnsureDirectory(kFolder));
    companion_ = std::make_unique<NotingProgram>(kFolder + L"\\Vek.exe");
  }
  void TearDown() override {
    if (!companion_) return;
    companion_.reset();
    std::filesystem::remove(std::filesystem::path(kFolder));
  }

  std::unique_ptr<NotingProgram> companion_;
};

TEST_F(InstalledCompanion, IsLaunchedOnceAndGivenTwoSeconds) {
  companion_->Hold();
  const auto start = Clock::now();
  EXPECT_EQ(LaunchCompanion(), 1);
  EXPECT_GE(Clock::now() - start, 2'000ms);
  EXPECT_TRUE(IsCompanionRunning());
  EXPECT_EQ(LaunchCompanion(), -1);
  EXPECT_EQ(tail_.Messages(), (std::vector<std::string>{"Vek desktop app launched successfully",
                                                        "Vek app is already running"}));
  companion_->Release();
  EXPECT_EQ(companion_->WaitForRuns(1).size(), 1u);
}

}  // namespace
}  // namespace vek

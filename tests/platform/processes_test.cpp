#include "addin/platform/processes.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>

#include "tests/support/noting_program.h"
#include "tests/support/scratch_folder.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using support::NotingProgram;
using support::ScratchFolder;

TEST(ModuleDirectory, IsTheFolderOfTheModuleAtTheAddress) {
  static const int in_this_program = 0;
  EXPECT_EQ(ModuleDirectory(&in_this_program), support::TestProgramFolder());

  wchar_t system_folder[MAX_PATH] = L"";
  ::GetSystemDirectoryW(system_folder, MAX_PATH);
  const HMODULE kernel = ::GetModuleHandleW(L"kernel32.dll");
  EXPECT_EQ(::_wcsicmp(ModuleDirectory(kernel).c_str(), system_folder), 0) << "no trailing backslash";
}

TEST(ModuleDirectory, IsEmptyOutsideOfEveryModule) {
  const auto on_the_heap = std::make_unique<int>(0);
  EXPECT_EQ(ModuleDirectory(on_the_heap.get()), L"");
}

class Processes : public testing::Test {
 protected:
  ScratchFolder folder_;
  NotingProgram program_{folder_ / L"noting program.exe"};
  ProgramCall call_{program_.path(), L"--about", folder_.path()};
};

TEST_F(Processes, TheProgramGetsItsQuotedPathTheArgumentsAndTheFolder) {
  call_.arguments = L"--install-pending \"two words\"";
  ASSERT_TRUE(RunAndWait(call_));
  const auto runs = program_.Runs();
  ASSERT_EQ(runs.size(), 1u);
  EXPECT_EQ(runs[0].command_line, L"\"" + program_.path() + L"\" --install-pending \"two words\"");
  EXPECT_EQ(runs[0].directory, folder_.path());
}

TEST_F(Processes, OpeningAProgramStartsItAndOneThatCannotBeStartedIsToldAtOnce) {
  EXPECT_TRUE(OpenProgram(program_.path()));
  EXPECT_EQ(program_.WaitForRuns(1).size(), 1u);
  call_.program = folder_ / L"missing.exe";
  EXPECT_FALSE(RunAndWait(call_));
  EXPECT_FALSE(RunDetached(call_));
  EXPECT_FALSE(OpenProgram(call_.program));
}

TEST(RunningPrograms, CountByTheirNameUpToTheFirstDot) {
  const std::pair<const wchar_t*, bool> cases[] = {{L"VekTestee.exe", true},
                                                   {L"vekTESTEE.EXE", true},
                                                   {L"VekTestee.Desktop.exe", true},
                                                   {L"VekTestees.exe", false},
                                                   {L"My VekTestee.exe", false}};
  for (const auto& [file, counts] : cases) {
    const auto patience = std::chrono::steady_clock::now() + 10s;
    while (IsProgramRunning(L"VekTestee") && std::chrono::steady_clock::now() < patience)
      std::this_thread::sleep_for(20ms);
    ASSERT_FALSE(IsProgramRunning(L"VekTestee")) << "left over from elsewhere";
    const ScratchFolder folder;
    NotingProgram program(folder / file);
    program.Hold();
    ASSERT_TRUE(RunDetached({program.path(), L"", folder.path()}));
    EXPECT_EQ(IsProgramRunning(L"VekTestee"), counts) << testing::PrintToString(std::wstring(file));
    program.Release();
    program.WaitForRuns(1);
  }
}

}  // namespace
}  // namespace vek

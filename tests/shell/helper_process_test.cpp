#include "addin/shell/helper_process.h"

#include <gtest/gtest.h>

#include "tests/support/noting_program.h"

namespace vek {
namespace {

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

}  // namespace
}  // namespace vek

#include "addin/platform/files.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>

#include "tests/support/scratch_folder.h"

namespace vek {
namespace {

using support::ScratchFolder;

void MakeFile(const std::wstring& path) {
  std::ofstream(std::filesystem::path(path)) << "x";
}

TEST(Files, ADirectoryExistsButIsNoFile) {
  const ScratchFolder folder;
  MakeFile(folder / L"caf\u00e9.prt");
  EXPECT_TRUE(PathExists(folder / L"caf\u00e9.prt"));
  EXPECT_TRUE(FileExists(folder / L"caf\u00e9.prt"));
  EXPECT_TRUE(PathExists(folder.path()));
  EXPECT_FALSE(FileExists(folder.path()));
  EXPECT_FALSE(PathExists(folder / L"none.prt"));
  EXPECT_FALSE(FileExists(folder / L"none.prt"));
  EXPECT_FALSE(PathExists(L""));
}

TEST(Files, EnsureDirectoryMakesTheParentsToo) {
  const ScratchFolder folder;
  EXPECT_TRUE(EnsureDirectory(folder / L"a\\b c\\d"));
  EXPECT_TRUE(PathExists(folder / L"a\\b c\\d"));
  EXPECT_FALSE(FileExists(folder / L"a\\b c\\d"));
  EXPECT_TRUE(EnsureDirectory(folder / L"a\\b c\\d")) << "what is there is fine";
}

TEST(Files, EnsureDirectoryFailsWhereAFileIsInTheWay) {
  const ScratchFolder folder;
  MakeFile(folder / L"file");
  EXPECT_FALSE(EnsureDirectory(folder / L"file\\below"));
  EXPECT_FALSE(PathExists(folder / L"file\\below"));
}

TEST(Files, EnvironmentVariablesAreReadWhole) {
  const std::wstring name = L"VEK_TEST_VARIABLE";
  const std::wstring values[] = {L"x", L"C:\\caf\u00e9", std::wstring(5000, L'y')};
  for (const std::wstring& value : values) {
    ::SetEnvironmentVariableW(name.c_str(), value.c_str());
    EXPECT_EQ(EnvironmentVariable(name), value);
  }
  ::SetEnvironmentVariableW(name.c_str(), L"");
  EXPECT_EQ(EnvironmentVariable(name), L"");
  ::SetEnvironmentVariableW(name.c_str(), nullptr);
  EXPECT_EQ(EnvironmentVariable(name), L"");
}

TEST(Files, TickCountIsInMilliseconds) {
  const unsigned before = TickCount();
  ::Sleep(60);
  const unsigned passed = TickCount() - before;
  EXPECT_GE(passed, 30u);
  EXPECT_LT(passed, 10'000u);
}

}  // namespace
}  // namespace vek

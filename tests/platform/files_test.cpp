#include "addin/platform/files.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
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
  MakeFile(folder / L"file");
  EXPECT_FALSE(EnsureDirectory(folder / L"file\\below"));
}

TEST(Files, MatchingNamesAreThoseOfFiles) {
  const ScratchFolder folder;
  MakeFile(folder / L"a.txt");
  MakeFile(folder / L"b.txt");
  MakeFile(folder / L"c.doc");
  EnsureDirectory(folder / L"d.txt");
  std::vector<std::wstring> names;
  EXPECT_TRUE(FilesMatching(folder / L"*.txt", names));
  std::ranges::sort(names);
  EXPECT_EQ(names, (std::vector<std::wstring>{L"a.txt", L"b.txt"}));
  EXPECT_FALSE(FilesMatching(folder / L"*.none", names));
  EXPECT_TRUE(names.empty());
}

TEST(Files, FullPathsHaveNoStepsBackAndFitTheirBuffer) {
  std::wstring full;
  EXPECT_TRUE(FullPath(L"C:\\a\\..\\b/c.txt", full));
  EXPECT_EQ(full, L"C:\\b\\c.txt");
  // 259 characters and the terminator fit, one more does not.
  EXPECT_TRUE(FullPath(L"C:\\" + std::wstring(256, L'x'), full));
  EXPECT_FALSE(FullPath(L"C:\\" + std::wstring(257, L'x'), full));
  EXPECT_FALSE(FullPath(L"", full));
}

TEST(Files, BytesAreWrittenAndReadWholeAndFilesDeleted) {
  const ScratchFolder folder;
  const std::wstring path = folder / L"caf\u00e9.txt";
  std::string bytes = "before";
  EXPECT_FALSE(ReadWholeFile(path, bytes));
  EXPECT_EQ(bytes, "");
  for (const std::string& content :
       {std::string(10'000, 'x'), std::string("a\r\n\0\x1a b", 8), std::string()}) {
    EXPECT_TRUE(WriteWholeFile(path, content));
    EXPECT_TRUE(ReadWholeFile(path, bytes));
    EXPECT_EQ(bytes, content);
  }
  EXPECT_FALSE(WriteWholeFile(folder.path(), "x"));
  EXPECT_FALSE(ReadWholeFile(folder.path(), bytes));
  EXPECT_EQ(DeleteFileAt(path), 0u);
  EXPECT_EQ(DeleteFileAt(path), static_cast<unsigned long>(ERROR_FILE_NOT_FOUND));
}

TEST(Files, AFileIsReplacedWholeOrStays) {
  const ScratchFolder folder;
  const std::wstring path = folder / L"kept.txt";
  std::string bytes;
  for (const std::string& content : {std::string("first"), std::string(10'000, 'x')}) {
    EXPECT_TRUE(ReplaceWholeFile(path, content));
    EXPECT_TRUE(ReadWholeFile(path, bytes));
    EXPECT_EQ(bytes, content);
  }
  const HANDLE reader = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  EXPECT_FALSE(ReplaceWholeFile(path, "second")) << "someone reads it";
  ::CloseHandle(reader);
  EXPECT_FALSE(ReplaceWholeFile(folder / L"no\\such.txt", "second"));
  EXPECT_TRUE(ReadWholeFile(path, bytes));
  EXPECT_EQ(bytes, std::string(10'000, 'x'));
  std::vector<std::wstring> names;
  FilesMatching(folder / L"*", names);
  EXPECT_EQ(names, std::vector<std::wstring>{L"kept.txt"}) << "nothing is left beside it";
}

TEST(Files, EnvironmentVariablesAreReadWhole) {
  const std::wstring name = L"VEK_TEST_VARIABLE";
  for (const std::wstring& value :
       {std::wstring(L"C:\\caf\u00e9"), std::wstring(5000, L'y'), std::wstring()}) {
    ::SetEnvironmentVariableW(name.c_str(), value.c_str());
    EXPECT_EQ(EnvironmentVariable(name), value);
  }
  ::SetEnvironmentVariableW(name.c_str(), nullptr);
  EXPECT_EQ(EnvironmentVariable(name), L"");
}

}  // namespace
}  // namespace vek

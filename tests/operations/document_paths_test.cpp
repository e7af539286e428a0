#include <gtest/gtest.h>

#include "addin/ops/common/model_paths.h"
#include "tests/support/operation_fixture.h"

namespace vek {
namespace {

TEST(ModelPaths, AreJoinedWithOneSeparator) {
  const struct {
    const wchar_t* directory;
    const wchar_t* file;
    const wchar_t* joined;
  } cases[] = {
      {L"C:\\parts", L"a.prt", L"C:\\parts\\a.prt"},
      {L"C:\\parts\\", L"a.prt", L"C:\\parts\\a.prt"},
      {L"C:\\parts\\//\\", L"a.prt", L"C:\\parts\\a.prt"},
      {L"\\/", L"a.prt", L"\\a.prt"},
      {L"", L"a.prt", L"a.prt"},
      {L"C:\\parts\\/", L"", L"C:\\parts\\/"},
      {L"", L"", L""},
  };
  for (const auto& each : cases) EXPECT_EQ(JoinPath(each.directory, each.file), each.joined);
}

TEST(ModelPaths, AreTakenApartByHand) {
  const struct {
    const wchar_t* path;
    const wchar_t* directory;
    const wchar_t* name;
    const wchar_t* extension;
  } cases[] = {
      {L"a", L"", L"a", L""},
      {L"a.prt", L"", L"a", L"prt"},
      {L"a.PRT.3", L"", L"a", L"PRT"},
      {L"a.prt.3.12", L"", L"a", L"prt"},
      {L"a.7", L"", L"a", L""},
      {L"a.txt", L"", L"a.txt", L""},
      {L"a.txt.4", L"", L"a.txt", L""},
      {L"a.", L"", L"a.", L""},
      {L"a.prt.prt.5", L"", L"a.prt", L"prt"},
      {L"C:/parts\\new/a.Asm.1", L"C:\\parts\\new", L"a", L"Asm"},
      {L"\\a.drw", L"", L"a", L"drw"},
      {L"C:\\my.prt\\a", L"C:\\my.prt", L"a", L""},
  };
  for (const auto& each : cases) {
    std::wstring directory = L"before", name = L"before", extension = L"before";
    EXPECT_TRUE(ParseModelFileNameByHand(each.path, directory, name, extension));
    EXPECT_EQ(directory, each.directory);
    EXPECT_EQ(name, each.name);
    EXPECT_EQ(extension, each.extension);
  }
}

TEST(ModelPaths, WithoutANameAreRefusedByHand) {
  for (const wchar_t* path : {L"", L"C:\\parts\\", L"C:/parts/.prt.1", L".2"}) {
    std::wstring directory, name, extension;
    EXPECT_FALSE(ParseModelFileNameByHand(path, directory, name, extension)) << path;
  }
}

TEST(ModelPaths, AreCutDownToABaseName) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"a", L"a"},
      {L"a.prt.prt.5", L"a"},
      {L"a.5.DRW.6", L"a"},
      {L"a.txt", L"a.txt"},
      {L"a.txt.prt.1", L"a.txt"},
      {L"a.", L"a."},
      {L"C:\\parts/sub\\a.asm", L"a"},
      {L"C:\\parts\\sub/a.asm", L"a"},
      {L"C:\\parts\\", L""},
  };
  for (const auto& [text, base] : cases) EXPECT_EQ(BaseModelName(text), base);
}

class HostParsedPaths : public support::OperationTest {};

TEST_F(HostParsedPaths, TakeWhatTheHostSays) {
  std::wstring directory, name, extension;
  ASSERT_TRUE(ParseModelFileName(L"C:\\parts\\a.stp", directory, name, extension));
  EXPECT_EQ(directory, L"C:\\parts");
  EXPECT_EQ(name, L"a");
  EXPECT_EQ(extension, L"stp");
}

TEST_F(HostParsedPaths, FallBackToTheHandWhenTheHostFails) {
  faults().Fail("ProFileMdlnameParse", -1);
  std::wstring directory, name, extension;
  ASSERT_TRUE(ParseModelFileName(L"C:\\parts\\a.stp", directory, name, extension));
  EXPECT_EQ(name, L"a.stp");
  EXPECT_EQ(extension, L"");
}

TEST_F(HostParsedPaths, OfTheHostsSilenceHaveNoName) {
  faults().NoEffect("ProFileMdlnameParse");
  std::wstring directory, name, extension;
  EXPECT_FALSE(ParseModelFileName(L"C:\\parts\\a.prt", directory, name, extension));
}

TEST_F(HostParsedPaths, TooLongForABufferNeverReachTheHost) {
  const auto mark = host().journal.Mark();
  std::wstring directory = L"before", name = L"before", extension = L"before";
  EXPECT_FALSE(ParseModelFileName(std::wstring(260, L'a'), directory, name, extension));
  EXPECT_TRUE(directory.empty() && name.empty() && extension.empty());
  EXPECT_TRUE(CallsSince(mark).empty());

  ParseModelFileName(std::wstring(259, L'a'), directory, name, extension);
  EXPECT_EQ(CallsSince(mark), std::vector<std::string>{"ProFileMdlnameParse"});
}

}  // namespace
}  // namespace vek

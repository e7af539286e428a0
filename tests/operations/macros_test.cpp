// The macro operations, on the folder of the user's profile in which macros really are. The tests touch
// nothing in it but files whose names begin as theirs do.
#include <gmock/gmock.h>
#include <windows.h>

#include <algorithm>
#include <fstream>
#include <tuple>

#include "addin/ops/common/history.h"
#include "addin/platform/files.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/support/captured_log.h"
#include "tests/support/operation_fixture.h"

namespace vek::support {
namespace {

constexpr const wchar_t* kCreate = L"api_macro_create";
constexpr const wchar_t* kRun = L"api_macro_run";
constexpr const wchar_t* kGetCode = L"api_macro_get_code";
constexpr const wchar_t* kDelete = L"api_macro_delete";
constexpr const wchar_t* kListMacros = L"api_macro_list";

class MacrosTest : public OperationTest {
 protected:
  void SetUp() override {
    OperationTest::SetUp();
    folder_ = LocalApplicationData() + L"\\VekAI\\Creo\\Macros";
    RemoveOurs();
  }
  void TearDown() override {
    RemoveOurs();
    OperationTest::TearDown();
  }

  std::wstring PathOf(const std::wstring& name) const { return folder_ + L"\\" + name + L".txt"; }
  static std::wstring Named(const std::wstring& name) {
    return LR"({"name":")" + JsonEscape(name) + LR"("})";
  }
  CreoMcpOperationResult Create(const std::wstring& name, const std::wstring& code,
                                const std::wstring& more = {}) {
    return Run(kCreate, LR"({"name":")" + JsonEscape(name) + LR"(","code":")" + JsonEscape(code) + L"\"" +
                            more + L"}");
  }
  void Write(const std::wstring& name, const std::string& bytes) {
    std::ofstream(std::filesystem::path(PathOf(name)), std::ios::binary) << bytes;
  }
  std::string Bytes(const std::wstring& name) {
    std::string bytes;
    EXPECT_TRUE(ReadWholeFile(PathOf(name), bytes));
    return bytes;
  }
  // The names of our own macros, as the list has them.
  std::vector<std::string> Listed() {
    std::vector<std::string> names;
    for (const auto& row : Succeed(kListMacros))
      if (row["name"].get<std::string>().starts_with("vek test")) names.push_back(row["name"]);
    return names;
  }

  std::wstring folder_;

 private:
  void RemoveOurs() {
    std::vector<std::wstring> names;
    FilesMatching(folder_ + L"\\vek test*", names);
    for (const std::wstring& name : names) {
      ::SetFileAttributesW((folder_ + L"\\" + name).c_str(), FILE_ATTRIBUTE_NORMAL);
      DeleteFileAt(folder_ + L"\\" + name);
    }
  }
};

TEST_F(MacrosTest, AMacroIsMadeReadOverwrittenAndDeleted) {
  auto result = Create(L"vek test a", L" models \r\n; tree ");
  EXPECT_EQ(result.message, L"Mapkey macro 'vek test a' created.");
  const std::wstring path = JsonEscape(PathOf(L"vek test a"));
  EXPECT_EQ(result.dataJson,
            Format(LR"({"name":"vek test a","path":"%s","action":"created","macro_type":"mapkey"})", path));
  EXPECT_EQ(Bytes(L"vek test a"), "models ; tree");
  EXPECT_EQ(CountCaptured(L"CreoMcpMacro: Mapkey macro 'vek test a' created."), 1);

  EXPECT_EQ(Create(L"vek test a", L"tree").message,
            LR"(Macro 'vek test a' already exists. Pass "overwrite": true to replace it.)");
  EXPECT_EQ(Bytes(L"vek test a"), "models ; tree");
  result = Create(L"vek test a", L"tree", LR"(,"overwrite":true)");
  EXPECT_EQ(result.message, L"Mapkey macro 'vek test a' overwritten.");
  EXPECT_THAT(result.dataJson, testing::HasSubstr(LR"("action":"overwritten")"));
  EXPECT_EQ(Create(L"vek test b", L"tree", LR"(,"overwrite":true)").message,
            L"Mapkey macro 'vek test b' created.");

  ExpectAnswer(kGetCode, Named(L"vek test a.mapkey"), L"Code for macro 'vek test a' retrieved.",
               Format(LR"({"name":"vek test a","macro_type":"mapkey","path":"%s","code":"tree"})", path));
  EXPECT_EQ(Run(kDelete, Named(L"vek test a.x")).message, L"Macro 'vek test a' deleted.");
  EXPECT_FALSE(FileExists(PathOf(L"vek test a")));
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(MacrosTest, TheListIsSortedAndFiltersByType) {
  for (const wchar_t* name : {L"vek test b", L"vek test A", L"vek test a b.c"}) Create(name, L"tree");
  EXPECT_THAT(Listed(), testing::ElementsAre("vek test A", "vek test a b", "vek test b"));
  const auto rows = Succeed(kListMacros, LR"({"macro_type":" MapKey "})");
  const nlohmann::json row = {{"name", "vek test b"},
                              {"type", "mapkey"},
                              {"embedded", false},
                              {"editable", true},
                              {"path", EncodeUtf8(PathOf(L"vek test b"))}};
  EXPECT_EQ(std::count(rows.begin(), rows.end(), row), 1);
  EXPECT_EQ(Run(kListMacros).message, Format(L"%d macro(s) found.", static_cast<int>(rows.size())));
  ExpectAnswer(kListMacros, LR"({"macro_type":"python"})",
               L"No macros matched the requested macro_type filter.", L"[]");
}

TEST_F(MacrosTest, NoNameLeadsOutOfTheFolder) {
  for (const wchar_t* name : {L"..\\..\\vek test x", L"C:/somewhere/vek test x.txt", L"../vek test x.y"}) {
    EXPECT_EQ(Create(name, L"tree", LR"(,"overwrite":true)").success, true);
    EXPECT_TRUE(FileExists(PathOf(L"vek test x")));
    EXPECT_TRUE(Run(kDelete, Named(name)).success);
    EXPECT_FALSE(FileExists(PathOf(L"vek test x")));
  }
}

TEST_F(MacrosTest, WhatMakesNoSenseIsRefused) {
  const std::tuple<const wchar_t*, const wchar_t*, std::wstring> cases[] = {
      {kCreate, LR"({"name":"...","code":"tree","document_name":"NONE"})",
       L"No open document matches 'NONE'."},
      {kRun, LR"({"name":"vek test","document_name":"NONE"})", L"No open document matches 'NONE'."},
      {kRun, LR"({"name":"vek test"})", Format(L"Macro 'vek test' not found under '%s'.", folder_)},
      {kGetCode, LR"({"name":"vek test"})", L"Macro 'vek test' not found."},
      {kDelete, LR"({"name":"vek test"})",
       Format(L"Macro 'vek test' not found in '%s'. Only macros created by Vek can be deleted via this API.",
              folder_)},
  };
  for (const auto& [operation, arguments, message] : cases) ExpectFailure(operation, arguments, message);
  EXPECT_TRUE(Listed().empty());
}

TEST_F(MacrosTest, ARunChangesTheModelAndLeavesNoHistory) {
  NewPart();
  Create(L"vek test run", L"mapkey x1 @MAPKEY_LABELsize;parameter LENGTH double 5 mm; units inch");
  ClearHistory();
  const auto mark = host().journal.Mark();
  ExpectAnswer(kRun, Named(L"vek test run"), L"Macro 'vek test run' ran successfully.");
  EXPECT_THAT(CallsSince(mark, {"ProMacroLoad", "ProMacroExecute"}),
              testing::ElementsAre("ProMacroLoad", "ProMacroExecute"));
  EXPECT_EQ(Succeed(L"api_parameters_get", LR"({"name":"length"})")["expression"], "5 mm");
  EXPECT_EQ(Current().length_unit, bench::LengthUnit::kInch);
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(MacrosTest, ARunGoesToTheDocumentThatItNames) {
  bench::Model& first = NewPart();
  NewPart();
  PushCreateFeature(L"A");
  Create(L"vek test run", L"units inch");
  Succeed(kRun, Format(LR"({"name":"vek test run","document_name":"%s"})", first.name));
  EXPECT_EQ(&Current(), &first);
  EXPECT_EQ(first.length_unit, bench::LengthUnit::kInch);
  EXPECT_EQ(UndoStack().size(), 1u) << "the history is left alone";
}

TEST_F(MacrosTest, AFileEditedByHandIsJoinedAndCheckedWhenItRuns) {
  NewPart();
  Write(L"vek test hand", "un\r\nits in\nch");
  EXPECT_EQ(Succeed(kGetCode, Named(L"vek test hand"))["code"], "units inch");
  Succeed(kRun, Named(L"vek test hand"));
  EXPECT_EQ(Current().length_unit, bench::LengthUnit::kInch);
  Write(L"vek test hand", "units \\mm");
  ExpectFailure(kRun, Named(L"vek test hand"),
                L"Macro 'vek test hand' failed: Creo macro code must not contain backslashes (ProMacroLoad "
                L"limitation).");
  Write(L"vek test hand", "");
  ExpectFailure(kRun, Named(L"vek test hand"), L"Macro 'vek test hand' failed: 'code' argument is required.");
}

TEST_F(MacrosTest, CodeThatTheHostRefusesFailsWithItsStatus) {
  NewPart();
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"units inch; dance", L"ProMacroLoad failed (status=-2)."},
      {L"units furlong", L"ProMacroExecute failed (status=-1)."}};
  for (const auto& [code, message] : cases) {
    Create(L"vek test run", code, LR"(,"overwrite":true)");
    ExpectFailure(kRun, Named(L"vek test run"), Format(L"Macro 'vek test run' failed: %s", message));
    EXPECT_EQ(Current().length_unit, bench::LengthUnit::kMillimetre) << "nothing of it was done";
  }
}

TEST_F(MacrosTest, FilesThatOthersHoldAreLeftAlone) {
  Create(L"vek test held", L"tree");
  const std::wstring path = PathOf(L"vek test held");
  const HANDLE held =
      ::CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  const auto unread = Format(L"Failed to read macro file '%s'.", path);
  ExpectFailure(kGetCode, Named(L"vek test held"), unread);
  ExpectFailure(kRun, Named(L"vek test held"), unread);
  EXPECT_EQ(Create(L"vek test held", L"x", LR"(,"overwrite":true)").message,
            Format(L"Failed to write macro file '%s'.", path));
  // 32: a sharing violation.
  ExpectFailure(kDelete, Named(L"vek test held.txt"), L"Failed to delete macro 'vek test held' (win32=32).");
  ::CloseHandle(held);
  EXPECT_EQ(Bytes(L"vek test held"), "tree");

  ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  // 5: access denied.
  ExpectFailure(kDelete, Named(L"vek test held"), L"Failed to delete macro 'vek test held' (win32=5).");
}

TEST_F(MacrosTest, CodeThatTheFilesEncodingCannotHoldIsNotWritten) {
  EXPECT_EQ(Create(L"vek test code", L"tree \u4e2d").message,
            Format(L"Failed to write macro file '%s'.", PathOf(L"vek test code")));
  EXPECT_FALSE(FileExists(PathOf(L"vek test code")));
}

}  // namespace
}  // namespace vek::support

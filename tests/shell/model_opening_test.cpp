// Part-opening requests from their slots to the model on the screen.
#include <ProSolid.h>
#include <ProUtil.h>
#include <ProWindows.h>
#include <windows.h>

#include <fstream>

#include "addin/host/text_buffer.h"
#include "addin/shell/lifecycle.h"
#include "addin/shell/model_opening.h"
#include "addin/shell/request_slots.h"
#include "bench/host/host.h"
#include "tests/shell/lifecycle_fixture.h"
#include "tests/support/captured_log.h"
#include "tests/support/noting_program.h"
#include "tests/support/scratch_folder.h"

namespace vek {
namespace {

using bench::TheHost;
using Names = std::vector<std::string>;

class ModelOpening : public Lifecycle {
 protected:
  void SetUp() override {
    Lifecycle::SetUp();
    std::wstring directory = folder_.path();
    ASSERT_EQ(ProDirectoryChange(directory.data()), PRO_TK_NO_ERROR);
    // No installation but the one that a test makes.
    ::SetEnvironmentVariableW(L"PRO_DIRECTORY", nullptr);
  }
  void TearDown() override {
    Lifecycle::TearDown();
    std::wstring elsewhere = support::TestProgramFolder();
    ProDirectoryChange(elsewhere.data());
  }

  static ProMdl NewModel(const wchar_t* name, ProMdlfileType type) {
    ProMdlName buffer;
    CopyCut(buffer, name);
    ProSolid solid = nullptr;
    EXPECT_EQ(ProSolidMdlnameCreate(buffer, type, &solid), PRO_TK_NO_ERROR);
    return solid;
  }
  // A file of an empty part, which is not in session; its path.
  std::wstring SavedPart(const wchar_t* name) {
    const ProMdl part = NewModel(name, PRO_MDLFILE_PART);
    EXPECT_EQ(ProMdlSave(part), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProMdlErase(part), PRO_TK_NO_ERROR);
    std::wstring path = folder_ / (std::wstring(name) + L".prt");
    std::filesystem::rename(path + L".1", path);
    return path;
  }
  static void MakeCurrent(const wchar_t* name, int type) {
    ProMdlName buffer;
    CopyCut(buffer, name);
    int window = 0;
    ASSERT_EQ(ProObjectwindowMdlnameCreate(buffer, static_cast<ProType>(type), &window), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProWindowActivate(window), PRO_TK_NO_ERROR);
  }
  std::wstring SomeFile(const std::wstring& name) {
    std::ofstream(std::filesystem::path(folder_ / name)) << "no model";
    return folder_ / name;
  }
  static FileDownloadInfo For(const std::wstring& path) {
    FileDownloadInfo info;
    info.downloadPath = path;
    return info;
  }
  static Names CallsOf(const FileDownloadInfo& info, int status) {
    const auto mark = TheHost().journal.Mark();
    EXPECT_EQ(OpenFileInCreo(info), status);
    return NamesSince(mark);
  }
  static std::wstring LastLine() { return support::CapturedLog().back().text; }
  static std::vector<std::wstring> Messages() {
    std::vector<std::wstring> texts;
    for (const auto& message : TheHost().ui.Messages()) texts.push_back(message.text);
    return texts;
  }

  support::ScratchFolder folder_;
};

TEST_F(ModelOpening, ANativePartBecomesAComponentAtTheOriginOfTheCurrentAssembly) {
  const std::wstring path = SavedPart(L"bolt");
  NewModel(L"BOX", PRO_MDLFILE_ASSEMBLY);
  MakeCurrent(L"BOX", 1);
  EXPECT_EQ(CallsOf(For(path), 0),
            (Names{"ProFileSubtypeGet", "ProDirectoryChange", "ProMdlnameRetrieve", "ProMdlCurrentGet",
                   "ProMdlTypeGet", "ProAsmcompAssemble", "ProAsmcompRegenerate", "ProWindowRepaint",
                   "ProWindowCurrentGet", "ProWindowRepaint", "ProWindowActivate", "ProTreetoolRefresh",
                   "ProMdlDisplay", "ProWindowRepaint"}));
  EXPECT_TRUE(
      Logged(L"SUCCESS: Transformation matrix created - Location: [0.000, 0.000, 0.000], Orientation: "
             L"[1.000,0.000,0.000; 0.000,1.000,0.000; 0.000,0.000,1.000]"));
  EXPECT_EQ(LastLine(), L"=============================");
  const bench::Model* assembly = TheHost().CurrentModel();
  EXPECT_EQ(assembly->features.back()->component->model->name, L"BOLT");
}

TEST_F(ModelOpening, TheLocationStandsInTheFourthColumnAsItCame) {
  FileDownloadInfo info = For(SavedPart(L"bolt"));
  info.location.x = 10;
  info.location.y = -20;
  info.location.z = 0.5;
  NewModel(L"BOX", PRO_MDLFILE_ASSEMBLY);
  MakeCurrent(L"BOX", 1);
  EXPECT_EQ(OpenFileInCreo(info), 0);
  const auto& place = TheHost().CurrentModel()->features.back()->component->place;
  EXPECT_EQ(bench::TranslationOf(place), (bench::Vector3{10, -20, 0.5}));
}

TEST_F(ModelOpening, ANativePartWithNothingCurrentGetsAWindow) {
  const std::wstring path = SavedPart(L"bolt");
  EXPECT_EQ(CallsOf(For(path), 0), (Names{"ProFileSubtypeGet", "ProDirectoryChange", "ProMdlnameRetrieve",
                                          "ProMdlCurrentGet", "ProObjectwindowMdlnameCreate"}));
  EXPECT_TRUE(Logged(L"WARNING: No current model found - Using fallback display method"));
}

TEST_F(ModelOpening, RefusesPathsThatItCanNotTake) {
  EXPECT_EQ(OpenFileInCreo({}), -2);
  EXPECT_EQ(OpenFileInCreo(For(folder_ / L"missing.prt")), -4);
  EXPECT_EQ(OpenFileInCreo(For(SomeFile(L"plain.txt"))), PRO_TK_GENERAL_ERROR);
  // One character more than a path may have.
  const std::wstring deep = folder_ / std::wstring(120, L'd');
  std::filesystem::create_directories(std::filesystem::path(deep));
  const std::wstring long_path = deep + L"\\" + std::wstring(260 - 5 - deep.size(), L'n') + L".prt";
  ASSERT_EQ(long_path.size(), 260u);
  std::ofstream(std::filesystem::path(long_path)) << "a part";
  EXPECT_EQ(OpenFileInCreo(For(long_path)), -2);
  // A name without a directory, in the working directory.
  const std::wstring path = SavedPart(L"bolt");
  std::filesystem::current_path(std::filesystem::path(folder_.path()));
  EXPECT_EQ(OpenFileInCreo(For(L"bolt.prt")), -2);
  EXPECT_EQ(LastLine(), L"ERROR: Could not extract directory from file path");
  TheHost().faults.Fail("ProDirectoryChange", -15);
  EXPECT_EQ(OpenFileInCreo(For(path)), -15);
  EXPECT_EQ(LastLine(), L"ERROR: Failed to change directory");
  // Over a part it is for a second session, whose program lies in an installation.
  NewModel(L"PLATE", PRO_MDLFILE_PART);
  MakeCurrent(L"PLATE", 2);
  EXPECT_EQ(OpenFileInCreo(For(path)), -1);
  EXPECT_EQ(LastLine(), L"ERROR: Failed to create new session for imported part");
}

TEST_F(ModelOpening, NeutralFilesAreConfirmedAndImportedUnderAFreeName) {
  const std::wstring name = std::wstring(40, L'A');
  const std::wstring path = SomeFile(name + L".STP");
  const char* const import = "ProIntfimportModelWithOptionsMdlnameCreate";

  TheHost().ui.AnswerNext(L"cancel");
  EXPECT_EQ(CallsOf(For(path), 0), (Names{"ProDirectoryChange", "ProFileMdlnameOpen"}));
  EXPECT_EQ(LastLine(), L"User canceled STEP file dialog");

  TheHost().faults.Fail(import, -5, 1, 100);
  EXPECT_EQ(OpenFileInCreo(For(path)), -5);
  EXPECT_EQ(LastLine(), L"ERROR: Could not resolve name clash after multiple attempts");
  EXPECT_EQ(support::CountCaptured(L"INFO: Name clash on import; trying unique suffixed names"), 100);
  std::vector<std::string> arguments;
  for (const auto& call : CallsSince(0))
    if (call.name == import) arguments.push_back(call.arguments);
  ASSERT_EQ(arguments.size(), 100u);
  EXPECT_NE(arguments[0].find('"' + std::string(31, 'a') + '"'), std::string::npos) << arguments[0];
  EXPECT_NE(arguments[99].find('"' + std::string(31, 'a') + "_99\""), std::string::npos) << arguments[99];

  TheHost().faults.Fail(import, -1);
  EXPECT_EQ(OpenFileInCreo(For(path)), -1);
  EXPECT_EQ(LastLine(), L"ERROR: STEP import failed (Error code: -1)");
  TheHost().faults.Fail("ProFileMdlnameOpen", -10);
  EXPECT_EQ(OpenFileInCreo(For(path)), -10);
  EXPECT_EQ(LastLine(), L"ERROR: ProFileMdlnameOpen failed (Error code: -10)");
}

TEST_F(ModelOpening, AFolderNamedLikeAStepFileMakesOneOfWhateverIsInIt) {
  std::filesystem::create_directories(std::filesystem::path(folder_ / L"old.stp"));
  const std::wstring path = SomeFile(L"old.stp\\bolt.prt");
  TheHost().ui.AnswerNext(L"cancel");
  EXPECT_EQ(CallsOf(For(path), 0), (Names{"ProDirectoryChange", "ProFileMdlnameOpen"}));
  const auto calls = CallsSince(0);
  EXPECT_TRUE(calls.back().arguments.starts_with("\"Open STEP File\", \"*.stp,*.step\""))
      << calls.back().arguments;
}

struct WorkspaceCase {
  std::wstring name;
  int status;
  std::wstring message;
};

TEST_F(ModelOpening, WhatCanNotBeHadFromTheWorkspaceIsToldToTheUser) {
  const std::wstring not_there =
      L"Could not open the Windchill object.\n\nMake sure Creo is connected to the Windchill server and the "
      L"object is in your active workspace, then try again.";
  const WorkspaceCase cases[] = {
      {L"", -2, L"Windchill open failed: no file name was provided."},
      {L"a.txt", -2, L"Windchill open failed: only part (.prt) and assembly (.asm) files are supported."},
      {std::wstring(176, L'a') + L".prt", -2, L"Windchill open failed: the file name is too long."},
      {std::wstring(175, L'a') + L".prt", -4, not_there},
  };
  for (const auto& [name, status, message] : cases) {
    FileDownloadInfo info;
    info.fileName = name;
    EXPECT_EQ(OpenWindchillModelInCreo(info), status) << name;
    ASSERT_FALSE(Messages().empty());
    EXPECT_EQ(Messages().back(), message) << name;
  }
  EXPECT_EQ(Messages().size(), std::size(cases));
  SavedPart(L"bolt");
  FileDownloadInfo info;
  info.fileName = L"bolt.prt";
  TheHost().faults.Fail("ProObjectwindowMdlnameCreate", -1);
  EXPECT_EQ(OpenWindchillModelInCreo(info), -1);
  EXPECT_EQ(Messages().back(), L"The Windchill object was retrieved but could not be displayed.");
}

TEST_F(ModelOpening, SlotsKeepTheLastRequestAndAreServedOneATick) {
  const std::wstring first = SavedPart(L"first"), second = SavedPart(L"second");
  SavedPart(L"third");
  FileDownloadInfo workspace;
  workspace.fileName = L"third.prt";
  OnFileProcessingRequest(workspace);
  OnFileProcessingRequest(For(first));
  OnFileProcessingRequest(For(second));
  const auto in_session = [](const wchar_t* name) {
    return TheHost().session.FindByName(name, PRO_MDL_PART) != nullptr;
  };
  PollTick();
  EXPECT_TRUE(in_session(L"SECOND"));
  EXPECT_FALSE(in_session(L"THIRD"));
  PollTick();
  EXPECT_TRUE(in_session(L"THIRD"));
  EXPECT_FALSE(in_session(L"FIRST"));
}

TEST_F(ModelOpening, RequestsAreSortedByWhatTheyName) {
  const std::wstring file = SomeFile(L"a.step");
  FileDownloadInfo placed = For(file);
  placed.placeLikeComponentTitle = L"BOLT";
  OnFileProcessingRequest(placed);
  EXPECT_EQ(LastLine(), L"ERROR: Unknown request type for placeLikeComponentTitle: BOLT");
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"x\\a.Prt", L"SUCCESS: Part replacement request queued"},
      {L"x\\a.asm.3", L"SUCCESS: Assembly inspection request queued"}};
  for (const auto& [path, line] : cases) {
    placed.downloadPath = path;
    OnFileProcessingRequest(placed);
    EXPECT_EQ(LastLine(), line);
  }
  OnFileProcessingRequest({});
  EXPECT_EQ(LastLine(), L"ERROR: Empty file path received");
  OnFileProcessingRequest(For(L"x\\a.prt"));
  EXPECT_EQ(LastLine(), L"ERROR: File does not exist: x\\a.prt");
  // Replacement before inspection, each in its tick.
  PollTick();
  EXPECT_EQ(LastLine(), L"ERROR: Replacement part file does not exist: x\\a.Prt");
  PollTick();
  EXPECT_EQ(LastLine(), L"ERROR: Replacement assembly file does not exist: x\\a.asm.3");
}

}  // namespace
}  // namespace vek

// The console and the program's arguments.
#include "bench/host/console/console.h"

#include <ProMdl.h>
#include <gmock/gmock.h>
#include <windows.h>

#include <filesystem>
#include <vector>

#include "bench/host/console/program.h"
#include "tests/support/bench_fixture.h"

namespace bench {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ConsoleTest : public support::BenchTest {
 protected:
  std::vector<std::string> Run(const std::string& line) {
    said.clear();
    goes_on = Console([this](const std::string& text) { said.push_back(text); }).Run(line);
    return said;
  }
  std::vector<std::string> said;
  bool goes_on = true;
};

TEST_F(ConsoleTest, EveryAnswerEndsWithOkOrAnError) {
  EXPECT_THAT(Run(""), ElementsAre("ok"));
  EXPECT_THAT(Run("  pause "), ElementsAre("ok"));
  EXPECT_TRUE(host().ui.Paused());
  EXPECT_THAT(Run("resume"), ElementsAre("ok"));
  EXPECT_FALSE(host().ui.Paused());
  EXPECT_THAT(Run("dance"), ElementsAre("error: there is no command dance; help lists them"));
  EXPECT_THAT(Run("pause now"), ElementsAre("error: usage: pause"));
  EXPECT_THAT(Run("tree"), ElementsAre("error: no model is current"));
  EXPECT_TRUE(goes_on);
  EXPECT_THAT(Run("quit"), ElementsAre("ok"));
  EXPECT_FALSE(goes_on);
}

TEST_F(ConsoleTest, ModelsTellsWindowStateVolumeAndSize) {
  Model& part = NewCurrentPart(L"BOLT");
  part.topology.mass = MassProperties{.volume = 12345678.9};
  part.topology.outline = Box{{-1, 0, 2.5}, {1, 10, 3}};
  NewAssembly(L"FRAME").modified = false;
  const int window = *host().windows.WindowOf(part);
  // From -1 to 1, from 0 to 10, from 2.5 to 3.
  EXPECT_THAT(Run("models"),
              ElementsAre("part BOLT, window " + std::to_string(window) +
                              ", current, modified, volume 12345678.9 mm³, size 2 x 10 x 0.5 mm",
                          "assembly FRAME", "ok"));
}

TEST_F(ConsoleTest, ResourcesCountsWhatTheProcessTakesAndGivesBack) {
  const auto handles = [this] {
    const std::string line = Run("resources").front();
    EXPECT_THAT(line, HasSubstr("handles: "));
    return std::stol(line.substr(line.find(' ')));
  };
  const long before = handles();
  const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  EXPECT_EQ(handles(), before + 1);
  CloseHandle(event);
  EXPECT_EQ(handles(), before);
}

TEST_F(ConsoleTest, JournalPutsRepeatedCallsOnOneLine) {
  Model& part = NewPart(L"BOLT");
  host().journal.Clear();
  ProMdlType type = PRO_MDL_UNUSED;
  for (int i = 0; i < 3; ++i) ProMdlTypeGet(Handle(part), &type);
  ProMdlDisplay(nullptr);
  EXPECT_THAT(Run("journal"),
              ElementsAre("1 ProMdlTypeGet(BOLT) = 0, 3 times", "4 ProMdlDisplay(null) = -2", "ok"));
  EXPECT_THAT(Run("journal 1"), ElementsAre("4 ProMdlDisplay(null) = -2", "ok"));
  EXPECT_THAT(Run("journal 0"), ElementsAre("error: N must be 1 or more: 0"));
}

TEST_F(ConsoleTest, FaultScriptsTheCallsThatItNamesAndRefusesWhatWouldNeverBeMet) {
  Model& part = NewPart(L"BOLT");
  EXPECT_THAT(Run("fault ProMdlDisplay -8 2-3"), ElementsAre("ok"));
  const ProError statuses[] = {ProMdlDisplay(Handle(part)), ProMdlDisplay(Handle(part)),
                               ProMdlDisplay(Handle(part)), ProMdlDisplay(Handle(part))};
  EXPECT_THAT(statuses, ElementsAre(0, -8, -8, 0));
  EXPECT_THAT(Run("fault ProMdlErase noeffect"), ElementsAre("ok"));
  EXPECT_EQ(ProMdlErase(Handle(part)), PRO_TK_NO_ERROR);
  EXPECT_NE(host().session.Find(Handle(part)), nullptr);

  EXPECT_THAT(Run("fault ProNoSuchCall -1"), ElementsAre("error: there is no call ProNoSuchCall"));
  EXPECT_THAT(Run("fault ProMdlDisplay often"), ElementsAre("error: STATUS is no number: often"));
  EXPECT_THAT(Run("fault ProMdlDisplay 0"), ElementsAre(HasSubstr("noeffect")));
  EXPECT_THAT(Run("fault ProMdlDisplay -1 0"), ElementsAre("error: NTH must be 1 or more: 0"));
  EXPECT_THAT(Run("fault ProMdlDisplay -1 3-2"), ElementsAre("error: MTH comes before NTH: 3-2"));
  EXPECT_THAT(Run("delay ProMdlDisplay soon"), ElementsAre("error: MS is no number: soon"));
}

TEST_F(ConsoleTest, LedgerTellsWhatIsOutstandingAndEveryViolation) {
  int handle = 0;
  host().ledger.Give(&handle, HandleKind::kSelection, "ProSelectionAlloc");
  host().ledger.Violation("ProArrayFree", "frees nothing");
  EXPECT_THAT(Run("ledger"),
              ElementsAre("outstanding: 1 selection", "violation: ProArrayFree frees nothing", "ok"));
  TakeViolations();
}

TEST_F(ConsoleTest, ParameterAddsOneOrSetsTheOneOfItsName) {
  Model& part = NewCurrentPart(L"BOLT");
  part.modified = false;
  const std::pair<const char*, const char*> refused[] = {
      {"parameter A double", "error: usage: parameter NAME double|string|integer|bool VALUE [UNIT] [locked]"},
      {"parameter A float 1", "error: the types are double, string, integer and bool, not float"},
      {"parameter A double 1x", "error: VALUE is no double: 1x"},
      {"parameter A integer 1.5", "error: VALUE is no integer: 1.5"},
      {"parameter A bool yes", "error: VALUE is neither true nor false: yes"},
      {"parameter A double 1 furlong", "error: there is no unit furlong for that"},
      {"parameter A integer 1 mm", "error: there is no unit mm for that"},
      {"parameter A12345678901234567890123456789012 integer 1", "error: NAME is too long"},
  };
  for (const auto& [line, answer] : refused) EXPECT_THAT(Run(line), ElementsAre(answer));
  EXPECT_TRUE(part.parameters.empty());
  EXPECT_FALSE(part.modified);

  EXPECT_THAT(Run("parameter Length double 2.5 mm locked"), ElementsAre("ok"));
  EXPECT_THAT(Run("parameter LENGTH string x"), ElementsAre("ok"));
  ASSERT_EQ(part.parameters.size(), 1u);
  EXPECT_EQ(part.parameters[0].name, L"LENGTH");
  EXPECT_EQ(std::get<std::wstring>(part.parameters[0].value), L"x");
  EXPECT_FALSE(part.parameters[0].locked);
  EXPECT_TRUE(part.modified);
  EXPECT_THAT(Run("relation d0"), ElementsAre("error: there is no dimension d0"));
}

class ProgramTest : public support::BenchTest {
 protected:
  // The exit status; what was printed as an error is in `said`.
  int Run(std::vector<std::wstring> arguments) {
    arguments.insert(arguments.begin(), L"creobench.exe");
    std::vector<wchar_t*> pointers;
    for (std::wstring& argument : arguments) pointers.push_back(argument.data());
    testing::internal::CaptureStderr();
    const int status = BenchMain(static_cast<int>(pointers.size()), pointers.data());
    said = testing::internal::GetCapturedStderr();
    host().announcements.SetSink(nullptr);
    return status;
  }
  std::string said;
};

TEST_F(ProgramTest, ArgumentsWithoutSenseAreExplained) {
  EXPECT_EQ(Run({}), 1);
  EXPECT_THAT(said, HasSubstr("usage: creobench.exe"));
  EXPECT_EQ(Run({L"--addin", L"a.dll", L"--kernel", L"k", L"--wrok", L"."}), 1);
  EXPECT_THAT(said, HasSubstr("there is no option --wrok"));
  EXPECT_EQ(Run({L"--addin", L"a.dll", L"--kernel", L"k", L"--work"}), 1);
  EXPECT_THAT(said, HasSubstr("the option --work needs a value"));
  WriteFile(L"file", "");
  EXPECT_EQ(Run({L"--addin", L"missing.dll", L"--kernel", L"k", L"--work", PathOf(L"file")}), 1);
  EXPECT_THAT(said, HasSubstr("file can't be entered")) << "before the add-in loads";
}

TEST_F(ProgramTest, AnAddinThatCantBeLoadedIsStatusTwo) {
  EXPECT_EQ(Run({L"--addin", PathOf(L"missing.dll"), L"--kernel", L"k", L"--work", directory()}), 2);
  EXPECT_THAT(said, HasSubstr("missing.dll can't be loaded"));
  EXPECT_EQ(
      Run({L"--addin", L"C:\\windows\\system32\\kernel32.dll", L"--kernel", L"k", L"--work", directory()}),
      2);
  EXPECT_THAT(said, HasSubstr("the add-in has no entry point user_initialize_plus"));
}

TEST_F(ProgramTest, AnAddinThatRefusesToStartIsStatusThreeWithItsReason) {
  const std::wstring addin = L"Z:" + std::filesystem::path(VEK_TEST_REFUSING_ADDIN).wstring();
  EXPECT_EQ(Run({L"--addin", addin, L"--kernel", L"k", L"--work", directory()}), 3);
  EXPECT_THAT(said, HasSubstr("refused to start (status -1): no licence"));
}

}  // namespace
}  // namespace bench

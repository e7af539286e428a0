// The program as the add-in starts it. Its window is not opened here: there may be no display.
#include <windows.h>

#include "addin/platform/owned_handle.h"
#include "addin/text/format.h"
#include "tests/helper/update_fixture.h"

namespace vek::helper {
namespace {

class HelperProgram : public UpdateFixture {
 protected:
  HelperProgram() { std::filesystem::copy_file(BuiltBeside(kHelperFile), installation_.File(kHelperFile)); }
  // Its exit code; -1 when it can't be started or doesn't end.
  int Run(const wchar_t* arguments) const {
    const std::wstring program = installation_.File(kHelperFile);
    std::wstring command_line = Format(L"\"%s\" %s", program, arguments);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!::CreateProcessW(program.c_str(), command_line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                          nullptr, nullptr, &startup, &started))
      return -1;
    const OwnedHandle process(started.hProcess), thread(started.hThread);
    DWORD code = 0;
    if (::WaitForSingleObject(process.get(), 30'000) != WAIT_OBJECT_0) return -1;
    return ::GetExitCodeProcess(process.get(), &code) ? static_cast<int>(code) : -1;
  }
  std::string LogTail() const {
    const std::string log = Read(installation_.Log());
    const auto end_of_time = log.rfind("] ");
    return log.substr(end_of_time == std::string::npos ? 0 : end_of_time + 2);
  }
};

TEST_F(HelperProgram, KnowsItsThreeArgumentsAndNothingElse) {
  for (const wchar_t* arguments : {L"", L"--help", L"about", L"--ABOUT", L"--check-update now", L"\"\""})
    EXPECT_EQ(Run(arguments), 2) << std::wstring(arguments);
  EXPECT_FALSE(PathExists(installation_.Log()));
}

TEST_F(HelperProgram, ReplacesItselfWhileItRuns) {
  Offer("999.0", {{kHelperFile, "new helper"}});
  EXPECT_EQ(Run(L"--check-update"), 0);
  EXPECT_EQ(LogTail(), "--check-update: version 999.0.0 is staged, 1 files (exit code 0)\n");
  EXPECT_EQ(Run(L"--install-pending"), 0);
  EXPECT_EQ(LogTail(), "--install-pending: version 999.0.0 is installed (exit code 0)\n");
  EXPECT_EQ(Installed(kHelperFile), "new helper");
  EXPECT_TRUE(PutAside(kHelperFile)) << "it was in use until it ended";
}

TEST_F(HelperProgram, TellsByItsExitCodeWhatWasRefused) {
  Write(offered_ / L"manifest.txt", "nonsense");
  EXPECT_EQ(Run(L"--check-update"), 4);
  EXPECT_EQ(LogTail(), "--check-update: line 1 of the manifest is wrong (exit code 4)\n");
}

}  // namespace
}  // namespace vek::helper

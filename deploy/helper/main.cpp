// VekAI.Creo.AddinHelper.exe: what the add-in has done outside of its host. The add-in starts it with one
// argument; exit_codes.h tells what comes back.

#include <windows.h>

#include <shellapi.h>

#include <exception>
#include <string>
#include <vector>

#include "addin/platform/log.h"
#include "addin/platform/processes.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "deploy/helper/about_window.h"
#include "deploy/helper/installation.h"
#include "deploy/helper/pending_install.h"
#include "deploy/helper/product.h"
#include "deploy/helper/update_check.h"

namespace vek::helper {
namespace {

using Errand = Outcome (*)(const Installation&, const Version&);

std::vector<std::wstring> Arguments() {
  std::vector<std::wstring> arguments;
  int count = 0;
  LPWSTR* words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (words) arguments.assign(words + 1, words + count);
  ::LocalFree(words);
  return arguments;
}

Outcome RunErrand(Errand errand, const Installation& installation) {
  try {
    return errand(installation, InstalledVersion());
  } catch (const std::exception& failure) {
    return {ExitCode::kFailed, Format(L"ended by an exception: %S", failure.what())};
  }
}

// One line a run, whatever comes of it.
ExitCode RunLogged(const wchar_t* argument, Errand errand) {
  // Nobody may be there to answer a box of the system's about a drive that isn't ready.
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  const std::wstring folder = ModuleDirectory(reinterpret_cast<const void*>(&RunLogged));
  if (folder.empty()) return ExitCode::kFailed;
  const Installation installation(folder);
  const Outcome outcome = RunErrand(errand, installation);
  LogFile(installation.Log())
      .Write(EncodeUtf8(
          Format(L"%s: %s (exit code %d)", argument, outcome.line, static_cast<int>(outcome.code))));
  return outcome.code;
}

ExitCode Run(const std::vector<std::wstring>& arguments) {
  if (arguments.size() != 1) return ExitCode::kArguments;
  const std::wstring& argument = arguments.front();
  if (argument == L"--about") return ShowAboutWindow();
  if (argument == L"--check-update") return RunLogged(L"--check-update", CheckForUpdate);
  if (argument == L"--install-pending") return RunLogged(L"--install-pending", InstallPending);
  return ExitCode::kArguments;
}

}  // namespace
}  // namespace vek::helper

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  return static_cast<int>(vek::helper::Run(vek::helper::Arguments()));
}

#include "addin/companion/companion_app.h"

#include <chrono>
#include <exception>
#include <thread>

#include "addin/platform/log.h"
#include "addin/platform/processes.h"
#include "addin/text/format.h"

namespace vek {
namespace {

constexpr const wchar_t* kCompanionPath = L"C:\\Program Files\\Vek\\Vek.exe";
constexpr const wchar_t* kCompanionName = L"Vek";
constexpr std::chrono::milliseconds kTimeToComeUp{2'000};

}  // namespace

bool IsCompanionRunning() {
  return IsProgramRunning(kCompanionName);
}

int LaunchCompanion() {
  try {
    if (IsCompanionRunning()) {
      LogShell(L"Vek app is already running");
      return kCompanionAlreadyRunning;
    }
    if (!OpenProgram(kCompanionPath)) {
      LogShell(L"Failed to launch Vek app.");
      return kCompanionNotLaunched;
    }
    LogShell(L"Vek desktop app launched successfully");
    std::this_thread::sleep_for(kTimeToComeUp);
    return kCompanionLaunched;
  } catch (const std::exception& thrown) {
    LogShell(Format(L"Exception launching Vek app: %S", thrown.what()));
    return kCompanionNotLaunched;
  }
}

}  // namespace vek

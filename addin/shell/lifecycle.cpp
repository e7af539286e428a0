#include "addin/shell/lifecycle.h"

#include <ProWindows.h>

#include <initializer_list>
#include <string>

#include "addin/host/text_buffer.h"
#include "addin/operations.h"
#include "addin/platform/log.h"
#include "addin/platform/winsock.h"
#include "addin/server/main_thread_bridge.h"
#include "addin/server/web_server.h"
#include "addin/shell/commands.h"
#include "addin/shell/helper_process.h"
#include "addin/shell/host_guard.h"
#include "addin/shell/request_slots.h"
#include "addin/shell/welcome_page.h"
#include "addin/text/format.h"

namespace vek {
namespace {

constexpr double kWholeWindowPercent = 100.0;
constexpr long kTickPauseMs = 100;

// The toolkit takes its names as writable text. The dialog is never shown: it exists to carry the timer.
char dialogName[] = "VekFileOpenDialog";

// Made while the host loads the add-in, and in this order: the server speaks to the bridge, the bridge to the
// provider.
const CreoMcpProvider provider = BuildProvider();
CreoMcpMainThread mainThread;
WinsockSockets sockets;
VekWebServer server(sockets, mainThread);

ProUITimer pollingTimer = 0;  // 0 while there is none

void LogLines(std::initializer_list<const wchar_t*> lines) {
  for (const wchar_t* line : lines) LogShell(line);
}

void ShowWelcomePage() {
  int window = 0;
  if (ProWindowCurrentGet(&window) != PRO_TK_NO_ERROR) {
    LogShell(L"ERROR: Failed to get current window ID");
    return;
  }
  if (ProWindowBrowserSizeSet(window, kWholeWindowPercent) != PRO_TK_NO_ERROR) {
    LogShell(L"ERROR: Failed to set browser size");
    return;
  }
  std::wstring url = WelcomePageUrl(GetModuleDirectory());
  if (ProWindowURLShow(window, url.data()) != PRO_TK_NO_ERROR) {
    LogShell(L"ERROR: Failed to show URL in browser");
    return;
  }
  LogShell(L"SUCCESS: URL displayed in embedded browser");
}

void StartTimer() {
  ProUIDialogCreate(dialogName, nullptr);
  LogShell(L"File open dialog created");
  ProName timer_name;
  CopyCut(timer_name, L"VekFileOpenPollingTimer");
  ProUITimerCreate(TimerTick, nullptr, timer_name, &pollingTimer);
  LogShell(L"File open polling timer initialized");
  ProUIDialogTimerStart(dialogName, pollingTimer, kTickPauseMs, PRO_B_FALSE);
  LogShell(L"File open polling timer started (100ms interval)");
}

void StopTimer() {
  if (pollingTimer == 0) return;
  ProUIDialogTimerStop(pollingTimer);
  ProUITimerDestroy(pollingTimer);
  ProUIDialogDestroy(dialogName);
  pollingTimer = 0;
  LogShell(L"Polling timer resources cleaned up");
}

void StartServer() {
  LogLines({L"=== Starting Vek Web Server ===", L"Port: 4001",
            L"Purpose: Receive part opening requests from external applications"});
  server.SetFileProcessingCallback(OnFileProcessingRequest);
  server.Log(L"VekWebServer: File processing callback set");
  LogShell(L"File processing callback registered");
  if (!server.Start()) {
    LogShell(L"ERROR: Failed to start Vek Web Server");
    LogShell(Format(L"Error details: %s", server.LastError()));
    LogLines({L"Server status: FAILED", L"================================"});
    return;
  }
  LogLines({L"Vek Web Server started successfully on port 4001",
            L"Web server is now listening for part opening requests", L"Available endpoints:",
            L"  - POST / : Part opening requests (JSON format)", L"  - POST /execute : MCP operations",
            L"  - GET /health : Health check", L"Performance optimizations:",
            L"  - Zero-latency connection acceptance", L"  - Minimal 0.1ms polling interval",
            L"  - Immediate request processing", L"Server status: ACTIVE",
            L"================================"});
}

void StopServer() {
  LogShell(L"=== Stopping Vek Web Server ===");
  // The provider goes only behind the server, which would otherwise meet requests with nothing to run them.
  server.Stop();
  mainThread.Shutdown();
  LogLines(
      {L"Vek Web Server stopped successfully", L"Port 4001 released", L"================================"});
}

}  // namespace

void TimerTick(char* dialog, ProUITimer timer, ProAppData) {
  KeepFromHost(L"serving a tick", PollTick);
  ProUIDialogTimerStart(dialog, timer, kTickPauseMs, PRO_B_FALSE);
}

void PollTick() {
  mainThread.Pump();
  ServeOneRequest();
}

}  // namespace vek

extern "C" int AddinInitialize(int, char**, char*, char*, wchar_t*) {
  using namespace vek;
  KeepFromHost(L"showing the product's page", ShowWelcomePage);
  KeepFromHost(L"registering the commands", RegisterCommands);
  KeepFromHost(L"starting the timer", StartTimer);
  KeepFromHost(L"publishing the provider", [] { mainThread.Publish(&provider); });
  KeepFromHost(L"starting the server", StartServer);
  KeepFromHost(L"checking for an update", [] { RunHelper(L"--check-update", false); });
  return 0;
}

extern "C" void AddinTerminate() {
  using namespace vek;
  KeepFromHost(L"taking back the popup menus", UnregisterPopupMenus);
  KeepFromHost(L"stopping the timer", StopTimer);
  KeepFromHost(L"stopping the server", StopServer);
  KeepFromHost(L"installing an update", [] { RunHelper(L"--install-pending", true); });
}

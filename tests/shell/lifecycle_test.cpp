#include "addin/shell/lifecycle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "bench/host/host.h"
#include "tests/shell/lifecycle_fixture.h"
#include "tests/support/captured_log.h"
#include "tests/support/noting_program.h"
#include "tests/support/raw_connection.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using bench::TheHost;
using support::NotingProgram;
using Names = std::vector<std::string>;
using LogLines = std::vector<std::wstring>;

class AddinStart : public Lifecycle {};
class AddinStop : public Lifecycle {};

TEST(AddinLoad, MakesTheServerAndCallsNothing) {
  EXPECT_EQ(LinesLoggedAtLoad(), LogLines{L"VekWebServer: VekWebServer: Constructor called"});
}

TEST_F(AddinStart, ShowsThePageAndThenArmsTheTimer) {
  Start();
  ASSERT_EQ(NamesSince(0), (Names{"ProWindowCurrentGet", "ProWindowBrowserSizeSet", "ProWindowURLShow",
                                  "ProCmd…, ProMenubar…", "ProNotificationSet", "ProUIDialogCreate",
                                  "ProUITimerCreate", "ProUIDialogTimerStart"}));
  auto calls = CallsSince(0);
  calls.erase(calls.begin() + 3, calls.end() - 3);
  EXPECT_EQ(calls[3].arguments, "\"VekFileOpenDialog\", null");
  EXPECT_EQ(calls[4].arguments, "\"VekFileOpenPollingTimer\"");
  EXPECT_TRUE(calls[5].arguments.starts_with("\"VekFileOpenDialog\", ")) << calls[5].arguments;
  EXPECT_TRUE(calls[5].arguments.ends_with(", 100")) << calls[5].arguments;
  for (const auto& call : calls) EXPECT_EQ(call.status, 0) << call.name;
  // The page fills the window and lies beside the module.
  EXPECT_EQ(TheHost().windows.browser_percent, 100.0);
  const std::wstring& url = TheHost().windows.browser_url;
  EXPECT_TRUE(url.starts_with(L"file:///"));
  EXPECT_TRUE(url.ends_with(L"/welcome.html"));
  EXPECT_EQ(url.find_first_of(L"\\ "), std::wstring::npos);
}

TEST_F(AddinStart, LogsEachStep) {
  Start();
  EXPECT_EQ(Lines(), (LogLines{L"SUCCESS: URL displayed in embedded browser",
                               L"File open dialog created",
                               L"File open polling timer initialized",
                               L"File open polling timer started (100ms interval)",
                               L"=== Starting Vek Web Server ===",
                               L"Port: 4001",
                               L"Purpose: Receive part opening requests from external applications",
                               L"VekWebServer: VekWebServer: File processing callback set",
                               L"File processing callback registered",
                               L"VekWebServer: VekWebServer: Starting server on port 4001",
                               L"VekWebServer: VekWebServer: Server started successfully on port 4001",
                               L"Vek Web Server started successfully on port 4001",
                               L"Web server is now listening for part opening requests",
                               L"Available endpoints:",
                               L"  - POST / : Part opening requests (JSON format)",
                               L"  - POST /execute : MCP operations",
                               L"  - GET /health : Health check",
                               L"Performance optimizations:",
                               L"  - Zero-latency connection acceptance",
                               L"  - Minimal 0.1ms polling interval",
                               L"  - Immediate request processing",
                               L"Server status: ACTIVE",
                               L"================================"}));
}

TEST_F(AddinStart, WithoutItsPageLogsWhichCallFailedAndGoesOn) {
  const std::pair<std::string, std::wstring> cases[] = {
      {"ProWindowCurrentGet", L"ERROR: Failed to get current window ID"},
      {"ProWindowBrowserSizeSet", L"ERROR: Failed to set browser size"},
      {"ProWindowURLShow", L"ERROR: Failed to show URL in browser"}};
  for (const auto& [call, line] : cases) {
    Lifecycle::SetUp();
    TheHost().faults.Fail(call, -1);
    Start();
    const Names names = NamesSince(0);
    ASSERT_GE(names.size(), 6u);
    EXPECT_EQ(names[names.size() - 6], call) << "behind it the two of the commands and three of the timer";
    EXPECT_EQ(Lines().front(), line);
    EXPECT_FALSE(Logged(L"SUCCESS: URL displayed in embedded browser"));
    EXPECT_TRUE(Logged(L"Server status: ACTIVE"));
    EXPECT_TRUE(TheHost().ui.Messages().empty());
    Stop();
  }
}

TEST_F(AddinStart, GoesOnWithoutATimer) {
  TheHost().faults.Fail("ProUIDialogCreate", -1);
  TheHost().faults.Fail("ProUITimerCreate", -1);
  Start();
  const Names names = NamesSince(0);
  ASSERT_EQ(names.size(), 8u);
  EXPECT_EQ(Names(names.end() - 3, names.end()),
            (Names{"ProUIDialogCreate", "ProUITimerCreate", "ProUIDialogTimerStart"}));
  EXPECT_TRUE(Logged(L"File open dialog created"));
  EXPECT_TRUE(Logged(L"File open polling timer initialized"));
  EXPECT_TRUE(Logged(L"File open polling timer started (100ms interval)"));
  EXPECT_TRUE(Logged(L"Server status: ACTIVE"));

  const auto mark = TheHost().journal.Mark();
  Stop();
  EXPECT_EQ(NamesSince(mark), Names{"ProNotificationUnset"}) << "no timer, so none to take back";
  EXPECT_FALSE(Logged(L"Polling timer resources cleaned up"));
}

TEST_F(AddinStart, WithThePortTakenGoesOnWithoutTheServer) {
  const NotingProgram helper(HelperPath());
  const PortTaken taken;
  Start();
  const LogLines lines = Lines();
  ASSERT_GE(lines.size(), 6u);
  EXPECT_EQ(LogLines(lines.end() - 6, lines.end()),
            (LogLines{L"VekWebServer: VekWebServer: Starting server on port 4001",
                      L"VekWebServer: VekWebServer: Failed to start HTTP server",
                      L"ERROR: Failed to start Vek Web Server", L"Error details: Failed to start HTTP server",
                      L"Server status: FAILED", L"================================"}));
  EXPECT_EQ(helper.WaitForRuns(1).size(), 1u) << "the helper still looks for an update";
  EXPECT_EQ(TheHost().ui.TimerCount(), 1u);
  EXPECT_TRUE(TheHost().menus.Run("AboutVek_Act"));
  EXPECT_EQ(helper.Runs().size(), 2u);
}

TEST_F(AddinStart, RunsTheHelperWithoutWaitingForIt) {
  NotingProgram helper(HelperPath());
  helper.Hold();
  Start();
  EXPECT_TRUE(helper.Runs().empty());
  helper.Release();
  const auto runs = helper.WaitForRuns(1);
  ASSERT_EQ(runs.size(), 1u);
  EXPECT_EQ(runs[0].command_line, L"\"" + HelperPath() + L"\" --check-update");
  EXPECT_EQ(runs[0].directory, support::TestProgramFolder());
}

TEST_F(AddinStop, TakesTheTimerBackAndThenTheServer) {
  Start();
  support::ClearCapturedLog();
  const auto mark = TheHost().journal.Mark();
  Stop();
  ASSERT_EQ(NamesSince(mark), (Names{"ProNotificationUnset", "ProUIDialogTimerStop", "ProUITimerDestroy",
                                     "ProUIDialogDestroy"}));
  const auto calls = CallsSince(mark);
  EXPECT_EQ(calls[1].arguments, calls[2].arguments) << "the same timer";
  EXPECT_EQ(calls[3].arguments, "\"VekFileOpenDialog\"");
  EXPECT_EQ(Lines(),
            (LogLines{L"Polling timer resources cleaned up", L"=== Stopping Vek Web Server ===",
                      L"VekWebServer: VekWebServer: Stopping server",
                      L"VekWebServer: VekWebServer: Server thread stopped",
                      L"VekWebServer: VekWebServer: Server stopped", L"Vek Web Server stopped successfully",
                      L"Port 4001 released", L"================================"}));
}

TEST_F(AddinStop, WaitsUntilTheHelperHasInstalledWhatIsPending) {
  NotingProgram helper(HelperPath());
  Start();
  ASSERT_EQ(helper.WaitForRuns(1).size(), 1u);
  helper.Hold();
  std::jthread release([&] {
    std::this_thread::sleep_for(300ms);
    helper.Release();
  });
  Stop();
  const auto runs = helper.Runs();
  ASSERT_EQ(runs.size(), 2u);
  EXPECT_EQ(runs[1].command_line, L"\"" + HelperPath() + L"\" --install-pending");
}

TEST_F(AddinStop, WithoutAStartHasNoTimerToTakeBack) {
  Stop();
  EXPECT_EQ(NamesSince(0), Names{"ProNotificationUnset"});
  EXPECT_EQ(Lines(), (LogLines{L"=== Stopping Vek Web Server ===", L"Vek Web Server stopped successfully",
                               L"Port 4001 released", L"================================"}));
}

TEST_F(AddinStop, GivesThePortBackToOthersAndToItself) {
  Start();
  EXPECT_THROW(PortTaken(), std::runtime_error);
  Stop();
  EXPECT_TRUE(TheHost().ui.Messages().empty()) << "that the helper is missing is not told";
  EXPECT_NO_THROW(PortTaken());
  Start();
  EXPECT_EQ(support::CountCaptured(L"Server status: ACTIVE"), 2);
  support::RawConnection client(4001);
  ASSERT_TRUE(client.Send("GET /health HTTP/1.1\r\n\r\n"));
  EXPECT_TRUE(client.ReadToEnd().starts_with("HTTP/1.1 200 OK\r\n"));
}

const std::string kArm = "ProUIDialogTimerStart";

class Tick : public Lifecycle {
 protected:
  void SetUp() override {
    Lifecycle::SetUp();
    Start();
  }

  static Names CallsOfOneTick() {
    const auto mark = TheHost().journal.Mark();
    TheHost().ui.RunTimersOnce();
    return NamesSince(mark);
  }
};

TEST_F(Tick, WithNothingToDoOnlyArmsTheTimerAgain) {
  for (int i = 0; i < 3; ++i) EXPECT_EQ(CallsOfOneTick(), Names{kArm});
}

TEST_F(Tick, ArmsTheTimerOnlyBehindTheWork) {
  support::RawConnection client(4001);
  const std::string body = R"({"operations":{"api_document_info":{}}})";
  ASSERT_TRUE(client.Send("POST /execute HTTP/1.1\r\nContent-Length: " + std::to_string(body.size()) +
                          "\r\n\r\n" + body));
  EXPECT_FALSE(client.HasAnswer(400ms)) << "nothing runs operations but the tick";
  Names busy;
  for (int i = 0; i < 500 && busy.empty(); ++i) {
    const Names calls = CallsOfOneTick();
    if (calls.size() > 1)
      busy = calls;
    else
      std::this_thread::sleep_for(5ms);
  }
  ASSERT_FALSE(busy.empty()) << "no tick has run the operation";
  EXPECT_EQ(busy.back(), kArm);
  EXPECT_EQ(std::count(busy.begin(), busy.end(), kArm), 1);
  EXPECT_TRUE(client.ReadToEnd().starts_with("HTTP/1.1 200 OK\r\n"));
}

}  // namespace
}  // namespace vek

// Starting and stopping, with everything that can go wrong in between.
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/core/running_server.h"
#include "tests/support/captured_log.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using support::CountCaptured;
using support::Eventually;
using support::ParseAnswer;
using support::PosixSockets;
using support::Pumping;
using support::RawConnection;
using support::RequestText;
using support::RunningServer;

constexpr const char* kHealth = "GET /health HTTP/1.1\r\n\r\n";

// Memory is short when the port is to be opened.
class ThrowingSockets : public PosixSockets {
 public:
  int Startup(std::uint16_t) override { throw std::runtime_error("no memory"); }
};

TEST(ServerLifecycle, StartsServesAndStopsAgainAndAgain) {
  support::ClearCapturedLog();
  RunningServer running;
  for (int i = 0; i < 3; ++i) {
    running.Start();
    EXPECT_EQ(ParseAnswer(running.Exchange(kHealth)).status, 200);
    EXPECT_EQ(CountCaptured(L"VekWebServer: VekWebServer: Received request: GET /health"), i + 1);
    running.server.Stop();
    EXPECT_EQ(running.sockets.OpenHandles(), 0u);
    EXPECT_EQ(running.sockets.OpenStartups(), 0);
    EXPECT_THROW(RawConnection(running.port()), std::runtime_error);
  }
}

TEST(ServerLifecycle, DoesNothingForASecondStartOrAStopTooMany) {
  support::ClearCapturedLog();
  RunningServer running;
  running.server.Stop();
  running.Start();
  EXPECT_TRUE(running.server.Start());
  EXPECT_EQ(CountCaptured(L"VekWebServer: VekWebServer: Server is already running"), 1);
  running.server.Stop();
  running.server.Stop();
  EXPECT_EQ(CountCaptured(L"VekWebServer: VekWebServer: Stopping server"), 1);
}

TEST(ServerLifecycle, TellsWhatThrewAtTheStart) {
  support::ClearCapturedLog();
  ThrowingSockets sockets;
  CreoMcpMainThread bridge;
  VekWebServer server(sockets, bridge, 0);
  // The second time as the first: a start that failed is none that runs.
  for (const int time : {1, 2}) {
    EXPECT_FALSE(server.Start());
    EXPECT_EQ(server.LastError(), L"Exception starting server: no memory");
    EXPECT_EQ(CountCaptured(L"VekWebServer: VekWebServer: Exception starting server: no memory"), time);
  }
}

TEST(ServerLifecycle, TakesTheSocketFromAConnectionInItsHandler) {
  support::ClearCapturedLog();
  RunningServer running;
  std::atomic<bool> in_handler{false};
  std::atomic<bool> let_go{false};
  running.server.SetRequestHandler([&](HttpServerResponse& response, const HttpServerRequest&) {
    in_handler = true;
    while (!let_go) std::this_thread::sleep_for(1ms);
    response.body = L"too late";
  });
  running.Start();
  RawConnection client(running.port());
  client.Send(kHealth);
  ASSERT_TRUE(Eventually([&] { return in_handler.load(); }));

  std::thread stopper([&] { running.server.Stop(); });
  EXPECT_EQ(client.ReadToEnd(), "");
  let_go = true;
  stopper.join();
  EXPECT_EQ(CountCaptured(L"VekWebServer: VekWebServer: Failed to send response"), 1);
  EXPECT_EQ(running.sockets.OpenHandles(), 0u);
}

// A request that comes to its end only behind the stop would hold it up for the whole of the bridge's wait.
TEST(ServerLifecycle, DropsTheRequestThatItIsReadingWhenItStops) {
  support::ClearCapturedLog();
  RunningServer running;
  running.Start();
  RawConnection client(running.port());
  client.Send(RequestText("POST", "/execute", R"({"operations":{"echo":{}}})").substr(0, 40));
  std::this_thread::sleep_for(100ms);
  std::thread stopper([&] { running.server.Stop(); });
  std::this_thread::sleep_for(100ms);
  client.Send(RequestText("POST", "/execute", R"({"operations":{"echo":{}}})").substr(40));
  EXPECT_EQ(client.ReadToEnd(), "");
  stopper.join();
  EXPECT_EQ(CountCaptured(L"VekWebServer: VekWebServer: Received request: POST /execute"), 0);
}

// Whoever never comes to the end of his request would hold up the host's own end for as long as he likes.
TEST(ServerLifecycle, StopsUnderAClientThatNeverFallsSilent) {
  support::ClearCapturedLog();
  RunningServer running;
  running.Start();
  std::atomic<bool> sending{false};
  std::atomic<bool> gone{false};
  std::thread client([&] {
    RawConnection endless(running.port());
    for (int i = 0; i < 200 && !gone; ++i) {
      endless.Send("x");
      sending = true;
      std::this_thread::sleep_for(50ms);
    }
    sending = false;
  });
  ASSERT_TRUE(Eventually([&] { return sending.load(); }));
  std::this_thread::sleep_for(100ms);
  running.server.Stop();
  EXPECT_TRUE(sending) << "the server was stopped only when its client had enough";
  gone = true;
  client.join();
  EXPECT_EQ(running.sockets.OpenHandles(), 0u);
}

TEST(ServerLifecycle, GoesOnAfterAnExceptionAndCanBeStoppedByARequest) {
  support::ClearCapturedLog();
  RunningServer running;
  std::atomic<int> calls{0};
  std::atomic<bool> stopped{false};
  running.server.SetRequestHandler([&](HttpServerResponse&, const HttpServerRequest&) {
    if (++calls == 1) throw std::runtime_error("no memory");
    running.server.Stop();
    stopped = true;
  });
  running.Start();
  EXPECT_EQ(running.Exchange(kHealth), "");
  EXPECT_EQ(running.Exchange(kHealth), "");
  EXPECT_EQ(CountCaptured(L"VekWebServer: VekWebServer: Exception in server thread: no memory"), 1);
  ASSERT_TRUE(Eventually([&] { return stopped.load(); }));
  running.Start();
  running.server.Stop();
}

}  // namespace
}  // namespace vek

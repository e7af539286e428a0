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
using support::PosixSockets;
using support::Post;
using support::Pumping;
using support::RawConnection;
using support::RunningServer;
using support::StatusOf;

constexpr const char* kHealth = "GET /health HTTP/1.1\r\n\r\n";

// One of the steps of opening the port fails.
class FailingSockets : public PosixSockets {
 public:
  enum class Step { kThrow, kStartup, kOpen, kBind, kListen };
  explicit FailingSockets(Step step) : step_(step) {}

  int Startup(std::uint16_t version) override {
    if (step_ == Step::kThrow) throw std::runtime_error("no memory");
    return step_ == Step::kStartup ? 10091 : PosixSockets::Startup(version);
  }
  Handle OpenStream() override { return step_ == Step::kOpen ? kInvalid : PosixSockets::OpenStream(); }
  bool Bind(Handle socket, std::uint16_t port) override {
    return step_ != Step::kBind && PosixSockets::Bind(socket, port);
  }
  bool Listen(Handle socket, int backlog) override {
    return step_ != Step::kListen && PosixSockets::Listen(socket, backlog);
  }

 private:
  const Step step_;
};

TEST(ServerLifecycle, StartsServesAndStopsAgainAndAgain) {
  support::ClearCapturedLog();
  RunningServer running;
  for (int i = 0; i < 3; ++i) {
    running.Start();
    EXPECT_EQ(StatusOf(running.Exchange(kHealth)), 200);
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

TEST(ServerLifecycle, LeavesNothingOpenWhenAStepOfTheStartFails) {
  using Step = FailingSockets::Step;
  for (const Step step : {Step::kThrow, Step::kStartup, Step::kOpen, Step::kBind, Step::kListen}) {
    support::ClearCapturedLog();
    FailingSockets sockets(step);
    CreoMcpMainThread bridge;
    VekWebServer server(sockets, bridge, 0);
    const std::wstring error =
        step == Step::kThrow ? L"Exception starting server: no memory" : L"Failed to start HTTP server";
    // The second time as the first: a start that failed is none that runs.
    for (const int time : {1, 2}) {
      EXPECT_FALSE(server.Start());
      EXPECT_EQ(server.LastError(), error);
      EXPECT_EQ(CountCaptured(L"VekWebServer: VekWebServer: " + error), time);
    }
    EXPECT_EQ(sockets.OpenHandles(), 0u);
    EXPECT_EQ(sockets.OpenStartups(), 0);
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
  client.Send(Post("/execute", R"({"operations":{"echo":{}}})").substr(0, 40));
  std::this_thread::sleep_for(100ms);
  std::thread stopper([&] { running.server.Stop(); });
  std::this_thread::sleep_for(100ms);
  client.Send(Post("/execute", R"({"operations":{"echo":{}}})").substr(40));
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

TEST(ServerLifecycle, StopsCleanlyUnderTraffic) {
  for (int round = 0; round < 10; ++round) {
    RunningServer running(50ms);
    running.Start();
    Pumping pumping(running.bridge);
    std::atomic<bool> done{false};
    std::thread client([&] {
      while (!done) {
        try {
          running.Exchange(Post("/execute", R"({"operations":{"echo":{}}})"));
        } catch (const std::runtime_error&) {
          return;  // the port is closed
        }
      }
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(5 * round));
    running.server.Stop();
    running.bridge.Shutdown();
    done = true;
    client.join();
    EXPECT_EQ(running.sockets.OpenHandles(), 0u);
  }
}

}  // namespace
}  // namespace vek

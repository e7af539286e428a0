// Start and stop under a hostile schedule, with clients of all kinds at the door.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tests/core/hostile_schedule.h"
#include "tests/core/running_server.h"
#include "tests/support/captured_log.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using support::Drawn;
using support::HostileSchedule;
using support::MeetingPoint;
using support::ParseAnswer;
using support::RawConnection;
using support::RequestText;

// Each call begins and ends late now and then.
class HostileSockets : public support::PosixSockets {
  template <typename Call>
  auto Late(Call call) {
    MeetingPoint();
    const auto result = call();
    MeetingPoint();
    return result;
  }

 public:
  Handle OpenStream() override {
    return Late([&] { return PosixSockets::OpenStream(); });
  }
  bool Listen(Handle socket, int backlog) override {
    return Late([&] { return PosixSockets::Listen(socket, backlog); });
  }
  int SelectForReading(Handle socket, std::chrono::microseconds limit) override {
    return Late([&] { return PosixSockets::SelectForReading(socket, limit); });
  }
  Handle Accept(Handle socket) override {
    return Late([&] { return PosixSockets::Accept(socket); });
  }
  int Receive(Handle socket, char* buffer, int size) override {
    return Late([&] { return PosixSockets::Receive(socket, buffer, size); });
  }
  int Send(Handle socket, const char* bytes, int size) override {
    return Late([&] { return PosixSockets::Send(socket, bytes, size); });
  }
  void Close(Handle socket) override {
    MeetingPoint();
    PosixSockets::Close(socket);
    MeetingPoint();
  }
};

// A whole answer with one of `statuses` and `part` in its body under 200; or nothing, from a server that is
// stopped.
void ExpectOneAnswerOrNone(const std::string& answer, std::initializer_list<int> statuses,
                           const std::string& part) {
  if (answer.empty()) return;
  const int status = ParseAnswer(answer).status;
  EXPECT_TRUE(std::find(statuses.begin(), statuses.end(), status) != statuses.end()) << answer;
  const std::string body = ParseAnswer(answer).body;
  EXPECT_NE(answer.find("Content-Length: " + std::to_string(body.size()) + "\r\n"), std::string::npos)
      << answer;
  if (status == 200) EXPECT_NE(body.find(part), std::string::npos) << answer;
}

class Clients {
 public:
  Clients(const HostileSockets& sockets, int count) {
    for (int i = 0; i < count; ++i)
      threads_.emplace_back([this, &sockets, i] {
        for (int request = 0; !done_; ++request) {
          try {
            RawConnection client(sockets.BoundPort());
            Do(client, std::to_string(1'000 * i + request));
          } catch (const std::runtime_error&) {
            std::this_thread::sleep_for(1ms);  // the port is closed
          }
        }
      });
  }
  ~Clients() {
    done_ = true;
    for (std::thread& thread : threads_) thread.join();
  }
  int Answered() const { return answered_; }

 private:
  void Do(RawConnection& client, const std::string& number) {
    const std::string batch =
        RequestText("POST", "/execute", R"({"operations":{"echo":{"number":)" + number + "}}}");
    switch (Drawn(6)) {
      case 0:
        return Ask(client, "GET /health HTTP/1.1\r\n\r\n", {200, 503}, R"("addinReachable":true)");
      case 1:
        return;
      case 2:
        client.EndWithReset();
        client.Send(batch.substr(0, Drawn(static_cast<unsigned>(batch.size()))));
        return;
      case 3:
        client.Send(batch.substr(0, 30));
        client.FinishSending();
        return;
      default:
        return Ask(client, batch, {200, 500, 503, 504}, "{\"number\":" + number + "}");
    }
  }

  void Ask(RawConnection& client, const std::string& request, std::initializer_list<int> statuses,
           const std::string& part) {
    const std::size_t half = Drawn(static_cast<unsigned>(request.size()));
    client.Send(request.substr(0, half));
    MeetingPoint();
    client.Send(request.substr(half));
    const std::string answer = client.ReadToEnd(support::kPatience);
    // A socket that is given the very port it connects to, because nobody listens there any more, meets
    // itself.
    if (request.starts_with(answer)) return;
    ++answered_;
    ExpectOneAnswerOrNone(answer, statuses, part);
  }

  std::atomic<bool> done_{false};
  std::atomic<int> answered_{0};
  std::vector<std::thread> threads_;
};

TEST(LifecycleSchedule, StopsWholeWhoeverIsAtTheDoor) {
  int answered = 0;
  const int made = support::ScheduledRounds(100);
  for (int i = 0; i < made && !HasFailure(); ++i) {
    support::ClearCapturedLog();
    const HostileSchedule schedule(i);
    SCOPED_TRACE(schedule.Name());
    HostileSockets sockets;
    CreoMcpProvider provider;
    bool open = false;  // the main thread's alone, as the provider's operations are
    provider.RegisterOperation(L"echo", [&open](const std::wstring& text) {
      EXPECT_TRUE(open) << "a batch ran in a stopped server";
      MeetingPoint();
      return MakeSuccessResult(L"echo", text);
    });
    CreoMcpMainThread bridge(std::chrono::milliseconds(1 + Drawn(20)));
    VekWebServer server(sockets, bridge, 0);
    Clients clients(sockets, 3);
    for (int turn = 0; turn < 3; ++turn) {
      bridge.Publish(&provider);
      open = true;
      ASSERT_TRUE(server.Start());
      for (unsigned tick = Drawn(12); tick > 0; --tick) {
        bridge.Pump();
        std::this_thread::sleep_for(std::chrono::microseconds(Drawn(1'000)));
      }
      server.Stop();
      bridge.Shutdown();
      open = false;
      bridge.Pump();
      EXPECT_EQ(sockets.OpenHandles(), 0u);
      EXPECT_EQ(sockets.OpenStartups(), 0);
    }
    answered += clients.Answered();
  }
  std::printf("%d rounds of three starts and stops, %d clients that asked\n", made, answered);
  EXPECT_GT(answered, 0);
}

}  // namespace
}  // namespace vek

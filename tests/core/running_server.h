// A server on a port of its own with a provider and a bridge, and a main thread to pump it.
#pragma once

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

#include "addin/server/main_thread_bridge.h"
#include "addin/server/provider.h"
#include "addin/server/web_server.h"
#include "tests/support/http_text.h"
#include "tests/support/posix_sockets.h"
#include "tests/support/raw_connection.h"

namespace vek::support {

// Long enough for a loaded machine; no test that passes waits for it.
inline constexpr std::chrono::milliseconds kPatience{20'000};

template <typename Condition>
bool Eventually(Condition condition) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

// Stands for the host's main thread: pumps until it is destroyed.
class Pumping {
 public:
  explicit Pumping(CreoMcpMainThread& bridge)
      : thread_([this, &bridge] {
          while (!stop_) {
            bridge.Pump();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
          }
        }) {}
  ~Pumping() {
    stop_ = true;
    thread_.join();
  }

 private:
  std::atomic<bool> stop_{false};
  std::thread thread_;
};

struct RunningServer {
  PosixSockets sockets;
  CreoMcpProvider provider;
  CreoMcpMainThread bridge;
  VekWebServer server;

  explicit RunningServer(std::chrono::milliseconds batch_wait = kPatience)
      : bridge(batch_wait), server(sockets, bridge, 0) {
    provider.RegisterOperation(L"echo",
                               [](const std::wstring& text) { return MakeSuccessResult(L"echo", text); });
  }
  ~RunningServer() { server.Stop(); }

  // Publishes the provider and opens the port.
  void Start() {
    bridge.Publish(&provider);
    if (!server.Start()) throw std::runtime_error("the server does not start");
  }

  int port() const { return sockets.BoundPort(); }

  // The whole answer to one request that is sent in one piece.
  std::string Exchange(std::string_view request) {
    RawConnection client(port());
    client.Send(request);
    return client.ReadToEnd(kPatience);
  }
};

}  // namespace vek::support

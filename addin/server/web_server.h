// The add-in's own small HTTP/1.1 server: one thread, one connection at a time, one request a connection.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include "addin/platform/sockets.h"
#include "addin/server/http_message.h"
#include "addin/server/main_thread_bridge.h"
#include "addin/server/part_opening.h"

namespace vek {

// The listening socket and the connection being served. Stop closes both under the feet of the server thread;
// whoever takes a handle out of its field is the one that closes it.
struct HttpListener {
  std::atomic<bool> listening{false};
  int port = 4001;
  std::atomic<SocketLayer::Handle> listenSocket{SocketLayer::kInvalid};
  std::atomic<SocketLayer::Handle> clientSocket{SocketLayer::kInvalid};
};

// Start, Stop and destruction belong to one thread, the host's main thread. Stop must come before
// destruction: a server that is destroyed while it runs closes its sockets and lets its thread go, because
// the only place where that happens is the end of the process, where the thread is dead already and a join
// would hang.
class VekWebServer {
 public:
  using RequestHandler = std::function<void(HttpServerResponse&, const HttpServerRequest&)>;

  static constexpr int kPort = 4001;

  VekWebServer(SocketLayer& sockets, CreoMcpMainThread& main_thread, int port = kPort);
  ~VekWebServer();
  VekWebServer(const VekWebServer&) = delete;
  VekWebServer& operator=(const VekWebServer&) = delete;

  // Opens the port and starts the thread. False leaves the server stopped, with the reason in LastError.
  bool Start();

  // Closes the sockets and waits for the thread; a batch in flight holds it up until the bridge's wait is
  // over. A request that is still being read is dropped, at the latest when its client has been silent for
  // two seconds.
  void Stop();

  const std::wstring& LastError() const { return lastError_; }

  // Takes every request ahead of all routing. To be set before Start.
  void SetRequestHandler(RequestHandler handler) { requestHandler_ = std::move(handler); }

  // Takes the requests to open a part. To be set before Start.
  void SetFileProcessingCallback(FileProcessingCallback callback) {
    fileProcessingCallback_ = std::move(callback);
  }

  // One line of the server log, which names the server in front of each line.
  void Log(std::wstring_view message) const;

 private:
  bool OpenListener();
  void CloseListener();
  void CloseSocket(std::atomic<SocketLayer::Handle>& socket);

  void Run();
  void ServeOneConnection();
  bool ReadRequest(SocketLayer::Handle socket, HttpServerRequest& request);
  void SendResponse(const HttpServerResponse& response);

  SocketLayer& sockets_;
  CreoMcpMainThread& main_thread_;
  const int wanted_port_;

  int port_ = 0;
  std::atomic<bool> running_{false};
  std::atomic<bool> stopRequested_{false};
  std::thread thread_;
  std::wstring lastError_;
  bool loggingEnabled_ = true;
  RequestHandler requestHandler_;
  FileProcessingCallback fileProcessingCallback_;
  std::unique_ptr<HttpListener> listener_;
};

}  // namespace vek

#include "addin/server/web_server.h"

#include <chrono>
#include <exception>
#include <utility>
#include <vector>

#include "addin/platform/log.h"
#include "addin/platform/text_encoding.h"
#include "addin/server/routes.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"

namespace vek {
namespace {

using namespace std::chrono_literals;

constexpr std::uint16_t kSocketVersion = 514;  // 2.2
constexpr int kBacklog = 0x7FFFFFFF;

// One byte of the buffer stays free for the zero behind the data.
constexpr int kReceiveBuffer = 0x40000;
constexpr std::chrono::microseconds kClientSilence = 2s;

constexpr std::chrono::nanoseconds kPollPause = 100'000ns;
constexpr std::chrono::nanoseconds kPauseAfterException = 100'000'000ns;

// Where a sleep below a millisecond returns at once, polling with it would eat a good part of a core: there
// the pause is a whole millisecond.
void SleepUntilNextPoll() {
  const auto wake = std::chrono::steady_clock::now() + kPollPause;
  std::this_thread::sleep_for(kPollPause);
  while (std::chrono::steady_clock::now() < wake) std::this_thread::sleep_for(1ms);
}

// Bytes that are no UTF-8 come from clients that send their own code page.
std::wstring DecodeRequest(std::string_view bytes) {
  std::wstring text = DecodeUtf8(bytes);
  return text.empty() ? DecodeAnsi(bytes) : text;
}

// An accepted socket on its way to the listener's record; closed when it does not get there.
class AcceptedSocket {
 public:
  AcceptedSocket(SocketLayer& sockets, SocketLayer::Handle handle) : sockets_(sockets), handle_(handle) {}
  ~AcceptedSocket() {
    if (handle_ != SocketLayer::kInvalid) sockets_.Close(handle_);
  }
  AcceptedSocket(const AcceptedSocket&) = delete;
  AcceptedSocket& operator=(const AcceptedSocket&) = delete;

  SocketLayer::Handle get() const { return handle_; }
  SocketLayer::Handle release() { return std::exchange(handle_, SocketLayer::kInvalid); }

 private:
  SocketLayer& sockets_;
  SocketLayer::Handle handle_;
};

}  // namespace

VekWebServer::VekWebServer(SocketLayer& sockets, CreoMcpMainThread& main_thread, int port)
    : sockets_(sockets),
      main_thread_(main_thread),
      wanted_port_(port),
      listener_(std::make_unique<HttpListener>()) {
  Log(L"VekWebServer: Constructor called");
}

VekWebServer::~VekWebServer() {
  Log(L"VekWebServer: Destructor called");
  stopRequested_ = true;
  CloseListener();
  if (thread_.joinable()) thread_.detach();
}

void VekWebServer::Log(std::wstring_view message) const {
  if (loggingEnabled_) LogShell(std::wstring(L"VekWebServer: ").append(message));
}

bool VekWebServer::Start() {
  try {
    if (running_) {
      Log(L"VekWebServer: Server is already running");
      return true;
    }
    port_ = wanted_port_;
    Log(Format(L"VekWebServer: Starting server on port %d", port_));
    if (!OpenListener()) {
      lastError_ = L"Failed to start HTTP server";
      Log(L"VekWebServer: " + lastError_);
      return false;
    }
    // The thread of an earlier run is still here when it was that thread itself that called Stop.
    if (thread_.joinable()) thread_.join();
    stopRequested_ = false;
    thread_ = std::thread(&VekWebServer::Run, this);
    running_ = true;
    Log(Format(L"VekWebServer: Server started successfully on port %d", port_));
    return true;
  } catch (const std::exception& thrown) {
    CloseListener();
    lastError_ = Format(L"Exception starting server: %S", thrown.what());
    Log(L"VekWebServer: " + lastError_);
    return false;
  }
}

void VekWebServer::Stop() {
  if (!running_) return;
  Log(L"VekWebServer: Stopping server");
  stopRequested_ = true;
  CloseListener();
  if (thread_.get_id() != std::this_thread::get_id()) thread_.join();
  running_ = false;
  Log(L"VekWebServer: Server stopped");
}

bool VekWebServer::OpenListener() {
  if (listener_->listening) return true;
  listener_->port = port_;
  if (sockets_.Startup(kSocketVersion) != 0) return false;
  const SocketLayer::Handle socket = sockets_.OpenStream();
  listener_->listenSocket = socket;
  if (socket == SocketLayer::kInvalid) {
    sockets_.Cleanup();
    return false;
  }
  sockets_.ReuseAddress(socket);
  if (!sockets_.Bind(socket, static_cast<std::uint16_t>(listener_->port)) ||
      !sockets_.Listen(socket, kBacklog)) {
    CloseSocket(listener_->listenSocket);
    sockets_.Cleanup();
    return false;
  }
  listener_->listening = true;
  return true;
}

void VekWebServer::CloseListener() {
  if (!listener_->listening) return;
  CloseSocket(listener_->listenSocket);
  CloseSocket(listener_->clientSocket);
  sockets_.Cleanup();
  listener_->listening = false;
}

void VekWebServer::CloseSocket(std::atomic<SocketLayer::Handle>& socket) {
  const SocketLayer::Handle handle = socket.exchange(SocketLayer::kInvalid);
  if (handle != SocketLayer::kInvalid) sockets_.Close(handle);
}

void VekWebServer::Run() {
  Log(L"VekWebServer: Server thread started");
  while (!stopRequested_) {
    try {
      ServeOneConnection();
      SleepUntilNextPoll();
    } catch (const std::exception& thrown) {
      CloseSocket(listener_->clientSocket);
      Log(Format(L"VekWebServer: Exception in server thread: %S", thrown.what()));
      std::this_thread::sleep_for(kPauseAfterException);
    }
  }
  Log(L"VekWebServer: Server thread stopped");
}

void VekWebServer::ServeOneConnection() {
  const SocketLayer::Handle listen_socket = listener_->listenSocket;
  if (!listener_->listening || listen_socket == SocketLayer::kInvalid) return;
  // Asked, not waited for: a blocked accept would not see that the server is to stop.
  if (sockets_.SelectForReading(listen_socket, 0us) < 1) return;
  AcceptedSocket accepted(sockets_, sockets_.Accept(listen_socket));
  if (accepted.get() == SocketLayer::kInvalid) return;

  HttpServerRequest request;
  if (!ReadRequest(accepted.get(), request)) return;
  // Behind a stop no timer runs a batch any more: taken now, it would hold the host's own end for the whole
  // of the bridge's wait.
  if (stopRequested_) return;
  listener_->clientSocket = accepted.release();
  Log(L"VekWebServer: Received request: " + request.method + L" " + request.path);

  HttpServerResponse response;
  if (requestHandler_) {
    requestHandler_(response, request);
  } else {
    const ServerLog log = [this](std::wstring_view message) { Log(message); };
    RouteRequest(response, request,
                 {main_thread_, port_, [&](HttpServerResponse& answer, const HttpServerRequest& opening) {
                    HandlePartOpeningRequest(answer, opening, fileProcessingCallback_, log);
                  }});
  }
  SendResponse(response);
}

bool VekWebServer::ReadRequest(SocketLayer::Handle socket, HttpServerRequest& request) {
  std::vector<char> buffer(kReceiveBuffer);
  sockets_.SetNonBlocking(socket);
  int received = 0;
  const auto text_so_far = [&] { return DecodeRequest({buffer.data(), static_cast<std::size_t>(received)}); };
  while (received < kReceiveBuffer - 1 && !stopRequested_) {
    if (sockets_.SelectForReading(socket, kClientSilence) < 1) break;
    const int count = sockets_.Receive(socket, buffer.data() + received, kReceiveBuffer - received - 1);
    if (count < 1) break;
    received += count;
    buffer[static_cast<std::size_t>(received)] = '\0';
    const std::wstring text = text_so_far();
    if (IsCompleteRequest(text)) return ParseRequest(text, request);
  }
  // A client that stalled, went away or sent too much is answered for what did arrive.
  return received > 0 && ParseRequest(text_so_far(), request);
}

void VekWebServer::SendResponse(const HttpServerResponse& response) {
  const std::string bytes = EncodeUtf8(ComposeResponse(response));
  const SocketLayer::Handle socket = listener_->clientSocket;
  // One call, whatever it takes of the response: the socket doesn't block, and nobody waits for a slow
  // client.
  const bool sent = socket != SocketLayer::kInvalid && !bytes.empty() &&
                    sockets_.Send(socket, bytes.data(), static_cast<int>(bytes.size())) > 0;
  CloseSocket(listener_->clientSocket);
  if (!sent) Log(L"VekWebServer: Failed to send response");
}

}  // namespace vek

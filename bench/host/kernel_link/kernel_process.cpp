#include <windows.h>
#include <winsock2.h>
#include <ws2tcpip.h>

#include "bench/host/kernel_link/kernel_process.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "bench/host/text.h"

namespace bench {
namespace {

constexpr DWORD kGraceMs = 2'000;

struct Winsock {
  Winsock() {
    WSADATA data;
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) throw KernelGivenUp("the host has no sockets");
  }
};

class OwnedSocket {
 public:
  explicit OwnedSocket(SOCKET socket) : socket_(socket) {}
  OwnedSocket(const OwnedSocket&) = delete;
  OwnedSocket& operator=(const OwnedSocket&) = delete;
  ~OwnedSocket() {
    if (socket_ != INVALID_SOCKET) closesocket(socket_);
  }
  SOCKET Get() const { return socket_; }
  SOCKET Release() { return std::exchange(socket_, INVALID_SOCKET); }

 private:
  SOCKET socket_;
};

// A native path is known to Wine under its drive Z.
std::wstring WindowsPath(std::wstring path) {
  if (!path.starts_with(L'/')) return path;
  std::ranges::replace(path, L'/', L'\\');
  return L"Z:" + path;
}

enum class Wait { kReadable, kWritable };

// Whether the socket was ready before the deadline.
bool WaitFor(SOCKET socket, Wait what, KernelProcess::Deadline deadline) {
  const auto left = std::chrono::duration_cast<std::chrono::microseconds>(
      std::max(deadline - std::chrono::steady_clock::now(), std::chrono::steady_clock::duration::zero()));
  fd_set set;
  FD_ZERO(&set);
  FD_SET(socket, &set);
  timeval time{static_cast<long>(left.count() / 1'000'000), static_cast<long>(left.count() % 1'000'000)};
  return select(0, what == Wait::kReadable ? &set : nullptr, what == Wait::kWritable ? &set : nullptr,
                nullptr, &time) == 1;
}

SOCKET ListenOnLoopback(int& port) {
  OwnedSocket listener(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  int size = sizeof address;
  const auto plain = reinterpret_cast<sockaddr*>(&address);
  if (listener.Get() == INVALID_SOCKET || bind(listener.Get(), plain, size) != 0 ||
      listen(listener.Get(), 1) != 0 || getsockname(listener.Get(), plain, &size) != 0)
    throw KernelGivenUp("the host can't listen for the geometry kernel: error " +
                        std::to_string(WSAGetLastError()));
  port = ntohs(address.sin_port);
  return listener.Release();
}

void* StartProgram(const std::wstring& program, int port) {
  const std::wstring path = WindowsPath(program);
  std::wstring command = L'"' + path + L"\" " + std::to_wstring(port);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                      nullptr, &startup, &process))
    throw KernelGivenUp("the geometry kernel '" + ToUtf8(program) + "' can't be started: error " +
                        std::to_string(GetLastError()));
  // For a native program Wine gives no handles and leaves whatever it finds in the thread's place: closed,
  // that could be a handle of somebody else's.
  if (!process.hProcess) return nullptr;
  CloseHandle(process.hThread);
  return process.hProcess;
}

void LetEnd(void* process) {
  if (!process) return;
  if (WaitForSingleObject(process, kGraceMs) == WAIT_TIMEOUT) TerminateProcess(process, 1);
  CloseHandle(process);
}

}  // namespace

KernelProcess KernelProcess::Start(const std::wstring& program, std::chrono::milliseconds timeout) {
  if (program.empty()) throw KernelGivenUp("no geometry kernel was named: give its program with --kernel");
  static const Winsock winsock;
  int port = 0;
  const OwnedSocket listener(ListenOnLoopback(port));
  KernelProcess kernel;
  kernel.socket_ = INVALID_SOCKET;
  kernel.process_ = StartProgram(program, port);
  if (!WaitFor(listener.Get(), Wait::kReadable, std::chrono::steady_clock::now() + timeout))
    throw KernelGivenUp("the geometry kernel '" + ToUtf8(program) + "' was started but doesn't connect");
  kernel.socket_ = accept(listener.Get(), nullptr, nullptr);
  if (kernel.socket_ == INVALID_SOCKET) throw KernelGivenUp("the geometry kernel's connection failed");

  const BOOL no_delay = TRUE;
  setsockopt(kernel.socket_, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&no_delay),
             sizeof no_delay);
  // Waiting is select's business, so that a kernel that stops reading can't hold the host.
  u_long non_blocking = 1;
  ioctlsocket(kernel.socket_, FIONBIO, &non_blocking);
  return kernel;
}

KernelProcess::KernelProcess(KernelProcess&& other) noexcept
    : socket_(std::exchange(other.socket_, INVALID_SOCKET)),
      process_(std::exchange(other.process_, nullptr)),
      received_(std::move(other.received_)) {}

KernelProcess::~KernelProcess() {
  if (socket_ != INVALID_SOCKET) closesocket(socket_);
  LetEnd(process_);
}

bool KernelProcess::IsConnected() const {
  char byte;
  if (!received_.empty() || recv(socket_, &byte, 1, MSG_PEEK) >= 0) return false;
  return WSAGetLastError() == WSAEWOULDBLOCK;
}

void KernelProcess::Send(std::string_view bytes, Deadline deadline) {
  while (!bytes.empty()) {
    const int sent =
        send(socket_, bytes.data(), static_cast<int>(std::min<std::size_t>(bytes.size(), 1 << 20)), 0);
    if (sent > 0) {
      bytes.remove_prefix(sent);
    } else if (WSAGetLastError() != WSAEWOULDBLOCK) {
      throw KernelLost("the geometry kernel died while it was asked");
    } else if (!WaitFor(socket_, Wait::kWritable, deadline)) {
      throw KernelGivenUp("the geometry kernel takes no request; it is let go");
    }
  }
}

std::string KernelProcess::ReceiveLine(Deadline deadline) {
  std::vector<char> buffer(1 << 16);
  std::size_t searched = 0;
  for (;;) {
    if (const auto end = received_.find('\n', searched); end != std::string::npos) {
      std::string line = received_.substr(0, end);
      received_.erase(0, end + 1);
      return line;
    }
    searched = received_.size();
    if (!WaitFor(socket_, Wait::kReadable, deadline))
      throw KernelGivenUp("the geometry kernel doesn't answer; it is let go");
    const int count = recv(socket_, buffer.data(), static_cast<int>(buffer.size()), 0);
    if (count > 0) {
      received_.append(buffer.data(), count);
    } else if (count == 0 || WSAGetLastError() != WSAEWOULDBLOCK) {
      throw KernelLost("the geometry kernel died before it answered");
    }
  }
}

}  // namespace bench

#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <limits>
#include <memory>

#include "bridge/stream_socket.h"

namespace vek::bridge {
namespace {

static_assert(sizeof(SOCKET) == sizeof(std::uintptr_t));

// Winsock for as long as the program runs.
class Winsock {
 public:
  Winsock() { started_ = ::WSAStartup(MAKEWORD(2, 2), &details_) == 0; }
  ~Winsock() {
    if (started_) ::WSACleanup();
  }
  bool started() const { return started_; }

 private:
  WSADATA details_{};
  bool started_ = false;
};

int Limited(std::size_t size) {
  return static_cast<int>(std::min<std::size_t>(size, std::numeric_limits<int>::max()));
}

}  // namespace

StreamSocket::~StreamSocket() {
  if (handle_ != kNone) ::closesocket(handle_);
}

bool StreamSocket::BeginConnecting(const Address& address) {
  static const Winsock winsock;
  if (!winsock.started()) return false;
  addrinfo wanted{};
  wanted.ai_family = AF_INET;
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (::getaddrinfo(address.host.c_str(), std::to_string(address.port).c_str(), &wanted, &found) != 0)
    return false;
  const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, ::freeaddrinfo);
  handle_ = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  if (handle_ == kNone) return false;
  u_long on = 1;
  ::ioctlsocket(handle_, FIONBIO, &on);
  return ::connect(handle_, found->ai_addr, static_cast<int>(found->ai_addrlen)) == 0 ||
         ::WSAGetLastError() == WSAEWOULDBLOCK;
}

bool StreamSocket::IsConnected() const {
  int error = 0;
  int size = sizeof error;
  return ::getsockopt(handle_, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error), &size) == 0 &&
         error == 0;
}

bool StreamSocket::Await(Readiness readiness, std::chrono::milliseconds limit) const {
  fd_set ready, failed;
  ready.fd_count = failed.fd_count = 1;
  ready.fd_array[0] = failed.fd_array[0] = handle_;
  timeval wait{};
  wait.tv_sec = static_cast<long>(limit.count() / 1000);
  wait.tv_usec = static_cast<long>(limit.count() % 1000 * 1000);
  // A connection that is refused shows in the third set only. The first argument has no meaning here.
  const bool sending = readiness == Readiness::kSending;
  return ::select(0, sending ? nullptr : &ready, sending ? &ready : nullptr, &failed, &wait) > 0;
}

std::ptrdiff_t StreamSocket::Send(std::string_view bytes) {
  return ::send(handle_, bytes.data(), Limited(bytes.size()), 0);
}

std::ptrdiff_t StreamSocket::Receive(char* buffer, std::size_t size) {
  return ::recv(handle_, buffer, Limited(size), 0);
}

void StreamSocket::EndSending() {
  ::shutdown(handle_, SD_SEND);
}

}  // namespace vek::bridge

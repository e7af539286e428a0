#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

#include "bridge/stream_socket.h"

namespace vek::bridge {
namespace {

int Descriptor(std::uintptr_t handle) {
  return static_cast<int>(handle);
}

}  // namespace

StreamSocket::~StreamSocket() {
  if (handle_ != kNone) ::close(Descriptor(handle_));
}

bool StreamSocket::BeginConnecting(const Address& address) {
  addrinfo wanted{};
  wanted.ai_family = AF_INET;
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (::getaddrinfo(address.host.c_str(), std::to_string(address.port).c_str(), &wanted, &found) != 0)
    return false;
  const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, ::freeaddrinfo);
  const int descriptor = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  if (descriptor < 0) return false;
  handle_ = static_cast<std::uintptr_t>(descriptor);
  ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
  return ::connect(descriptor, found->ai_addr, found->ai_addrlen) == 0 || errno == EINPROGRESS;
}

bool StreamSocket::IsConnected() const {
  int error = 0;
  socklen_t size = sizeof error;
  return ::getsockopt(Descriptor(handle_), SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
}

bool StreamSocket::Await(Readiness readiness, std::chrono::milliseconds limit) const {
  const short events = readiness == Readiness::kSending ? POLLOUT : POLLIN;
  pollfd wait{Descriptor(handle_), events, 0};
  return ::poll(&wait, 1, static_cast<int>(limit.count())) > 0;
}

std::ptrdiff_t StreamSocket::Send(std::string_view bytes) {
  return ::send(Descriptor(handle_), bytes.data(), bytes.size(), MSG_NOSIGNAL);
}

std::ptrdiff_t StreamSocket::Receive(char* buffer, std::size_t size) {
  return ::recv(Descriptor(handle_), buffer, size, 0);
}

void StreamSocket::EndSending() {
  ::shutdown(Descriptor(handle_), SHUT_WR);
}

}  // namespace vek::bridge

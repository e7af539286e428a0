#include "tests/support/posix_sockets.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vek::support {

class PosixSockets::Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { ::close(number_); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }

 private:
  const int number_;
};

int PosixSockets::Startup(std::uint16_t) {
  ++startups_;
  return 0;
}

void PosixSockets::Cleanup() {
  --startups_;
}

SocketLayer::Handle PosixSockets::OpenStream() {
  return Keep(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
}

void PosixSockets::ReuseAddress(Handle socket) {
  const int on = 1;
  if (const auto found = Find(socket))
    ::setsockopt(found->number(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
}

bool PosixSockets::Bind(Handle socket, std::uint16_t port) {
  const auto found = Find(socket);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_ANY);
  address.sin_port = htons(port);
  socklen_t size = sizeof address;
  auto* const any = reinterpret_cast<sockaddr*>(&address);
  if (!found || ::bind(found->number(), any, size) != 0) return false;
  if (::getsockname(found->number(), any, &size) != 0) return false;
  bound_port_ = ntohs(address.sin_port);
  return true;
}

bool PosixSockets::Listen(Handle socket, int backlog) {
  const auto found = Find(socket);
  return found && ::listen(found->number(), backlog) == 0;
}

int PosixSockets::SelectForReading(Handle socket, std::chrono::microseconds limit) {
  const auto found = Find(socket);
  if (!found) return -1;
  pollfd readable{found->number(), POLLIN, 0};
  return ::poll(&readable, 1,
                static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(limit).count()));
}

SocketLayer::Handle PosixSockets::Accept(Handle socket) {
  const auto found = Find(socket);
  return found ? Keep(::accept(found->number(), nullptr, nullptr)) : kInvalid;
}

void PosixSockets::SetNonBlocking(Handle socket) {
  if (const auto found = Find(socket))
    ::fcntl(found->number(), F_SETFL, ::fcntl(found->number(), F_GETFL) | O_NONBLOCK);
}

int PosixSockets::Receive(Handle socket, char* buffer, int size) {
  const auto found = Find(socket);
  if (!found) return -1;
  const auto count = ::recv(found->number(), buffer, static_cast<std::size_t>(size), 0);
  return static_cast<int>(count);
}

int PosixSockets::Send(Handle socket, const char* bytes, int size) {
  const auto found = Find(socket);
  if (!found) return -1;
  return static_cast<int>(::send(found->number(), bytes, static_cast<std::size_t>(size), MSG_NOSIGNAL));
}

void PosixSockets::Close(Handle socket) {
  const std::lock_guard lock(mutex_);
  open_.erase(socket);
}

std::size_t PosixSockets::OpenHandles() const {
  const std::lock_guard lock(mutex_);
  return open_.size();
}

SocketLayer::Handle PosixSockets::Keep(int descriptor) {
  if (descriptor < 0) return kInvalid;
  const std::lock_guard lock(mutex_);
  open_.emplace(next_, std::make_shared<Descriptor>(descriptor));
  return next_++;
}

std::shared_ptr<PosixSockets::Descriptor> PosixSockets::Find(Handle socket) const {
  const std::lock_guard lock(mutex_);
  const auto found = open_.find(socket);
  return found == open_.end() ? nullptr : found->second;
}

}  // namespace vek::support

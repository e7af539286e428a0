#include "bench/kernel/connection.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>

#include "bench/kernel/line_cutter.h"

namespace bench::kernel {

namespace {

[[noreturn]] void Fail(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

// Ends the process when the other side of the socket closes, unless this side was asked to stop before.
void EndWithTheOtherSide(const std::stop_token& stop, int socket) {
  pollfd watched{socket, POLLRDHUP, 0};
  int ready = 0;
  while ((ready = poll(&watched, 1, -1)) < 0 && errno == EINTR) {
  }
  // Neither destructors nor handlers: the thread that computes may hold any lock.
  if (ready == 1 && !stop.stop_requested()) _exit(0);
}

}  // namespace

Connection::Connection(int port) : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  if (socket_ < 0) Fail("socket");
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const int at_once = 1;
  if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &at_once, sizeof at_once) != 0) {
    const int error = errno;
    close(socket_);
    errno = error;
    Fail("connect");
  }
  watch_ =
      std::jthread([socket = socket_](const std::stop_token& stop) { EndWithTheOtherSide(stop, socket); });
}

Connection::~Connection() {
  watch_.request_stop();
  shutdown(socket_, SHUT_RDWR);  // wakes the watch
  watch_.join();
  close(socket_);
}

void Connection::Send(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent < 0) Fail("send");
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
}

void Connection::Serve(const std::function<std::string(std::string_view)>& answer) {
  LineCutter lines;
  std::array<char, 65536> chunk;
  for (;;) {
    const ssize_t received = recv(socket_, chunk.data(), chunk.size(), 0);
    if (received < 0 && errno == EINTR) continue;
    if (received < 0) Fail("recv");
    if (received == 0) return;
    lines.Add({chunk.data(), static_cast<std::size_t>(received)});
    while (const auto line = lines.Next()) Send(answer(*line) + '\n');
  }
}

}  // namespace bench::kernel

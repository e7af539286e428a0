#include "tests/support/raw_connection.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

namespace vek::support {

RawConnection::RawConnection(int port) : descriptor_(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)) {
  // Each Send is a segment of its own.
  const int on = 1;
  ::setsockopt(descriptor_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  if (::connect(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return;
  ::close(descriptor_);
  throw std::runtime_error("nobody listens on port " + std::to_string(port));
}

RawConnection::~RawConnection() {
  ::close(descriptor_);
}

bool RawConnection::Send(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

void RawConnection::FinishSending() {
  ::shutdown(descriptor_, SHUT_WR);
}

void RawConnection::EndWithReset() {
  const linger at_once{1, 0};
  ::setsockopt(descriptor_, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
}

bool RawConnection::HasAnswer(std::chrono::milliseconds limit) {
  pollfd readable{descriptor_, POLLIN, 0};
  return ::poll(&readable, 1, static_cast<int>(limit.count())) > 0;
}

std::string RawConnection::ReadToEnd(std::chrono::milliseconds limit) {
  std::string answer;
  char buffer[4096];
  while (HasAnswer(limit)) {
    const auto count = ::recv(descriptor_, buffer, sizeof buffer, 0);
    // A reset ends the answer too: that is how a server closes on bytes that it has not read.
    if (count <= 0) return answer;
    answer.append(buffer, static_cast<std::size_t>(count));
  }
  throw std::runtime_error("no end of the answer in time");
}

}  // namespace vek::support

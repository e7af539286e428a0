// The same client's end where Winsock stands behind it.
#include <winsock2.h>

#include <cstdint>
#include <stdexcept>

#include "tests/support/raw_connection.h"

namespace vek::support {
namespace {

SOCKET SocketOf(int descriptor) {
  return static_cast<SOCKET>(descriptor);
}

// Winsock for as long as the process lives.
void NeedSockets() {
  static const int status = [] {
    WSADATA details{};
    return ::WSAStartup(MAKEWORD(2, 2), &details);
  }();
  if (status != 0) throw std::runtime_error("no sockets");
}

int OpenSocket() {
  NeedSockets();
  // The handles of sockets are small numbers that an int holds.
  return static_cast<int>(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
}

}  // namespace

RawConnection::RawConnection(int port) : descriptor_(OpenSocket()) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
  address.sin_port = ::htons(static_cast<std::uint16_t>(port));
  if (::connect(SocketOf(descriptor_), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
    return;
  ::closesocket(SocketOf(descriptor_));
  throw std::runtime_error("nobody listens on port " + std::to_string(port));
}

RawConnection::~RawConnection() {
  ::closesocket(SocketOf(descriptor_));
}

bool RawConnection::Send(std::string_view bytes) {
  while (!bytes.empty()) {
    const int count = ::send(SocketOf(descriptor_), bytes.data(), static_cast<int>(bytes.size()), 0);
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

void RawConnection::FinishSending() {
  ::shutdown(SocketOf(descriptor_), SD_SEND);
}

void RawConnection::EndWithReset() {
  const linger at_once{1, 0};
  ::setsockopt(SocketOf(descriptor_), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&at_once),
               sizeof at_once);
}

bool RawConnection::HasAnswer(std::chrono::milliseconds limit) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(limit);
  timeval wait{static_cast<long>(seconds.count()),
               static_cast<long>(std::chrono::microseconds(limit - seconds).count())};
  fd_set readable;
  readable.fd_count = 1;
  readable.fd_array[0] = SocketOf(descriptor_);
  return ::select(0, &readable, nullptr, nullptr, &wait) > 0;
}

std::string RawConnection::ReadToEnd(std::chrono::milliseconds limit) {
  std::string answer;
  char buffer[4096];
  while (HasAnswer(limit)) {
    const int count = ::recv(SocketOf(descriptor_), buffer, sizeof buffer, 0);
    if (count <= 0) return answer;
    answer.append(buffer, static_cast<std::size_t>(count));
  }
  throw std::runtime_error("no end of the answer in time");
}

}  // namespace vek::support

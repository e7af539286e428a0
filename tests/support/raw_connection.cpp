#include "tests/support/raw_connection.h"

#ifdef _WIN32
#include <winsock2.h>
#else
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

#include <cstdint>
#include <stdexcept>

namespace vek::support {
namespace {

#ifdef _WIN32
constexpr int kEndOfSending = SD_SEND;
constexpr int kNoSignal = 0;

// Handles of sockets are small numbers, which an int holds.
int OpenSocket() {
  static const int status = [] {
    WSADATA details{};
    return ::WSAStartup(MAKEWORD(2, 2), &details);
  }();
  if (status != 0) throw std::runtime_error("no sockets");
  return static_cast<int>(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
}

void CloseSocket(int socket) {
  ::closesocket(static_cast<SOCKET>(socket));
}

int Poll(pollfd& wanted, int limit_ms) {
  return ::WSAPoll(&wanted, 1, limit_ms);
}
#else
constexpr int kEndOfSending = SHUT_WR;
constexpr int kNoSignal = MSG_NOSIGNAL;

int OpenSocket() {
  return ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
}

void CloseSocket(int socket) {
  ::close(socket);
}

int Poll(pollfd& wanted, int limit_ms) {
  return ::poll(&wanted, 1, limit_ms);
}
#endif

template <typename Value>
void SetOption(int socket, int level, int name, const Value& value) {
  ::setsockopt(socket, level, name, reinterpret_cast<const char*>(&value), sizeof value);
}

}  // namespace

RawConnection::RawConnection(int port) : descriptor_(OpenSocket()) {
  // Each Send is a segment of its own.
  SetOption(descriptor_, IPPROTO_TCP, TCP_NODELAY, 1);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  if (::connect(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return;
  CloseSocket(descriptor_);
  throw std::runtime_error("nobody listens on port " + std::to_string(port));
}

RawConnection::~RawConnection() {
  CloseSocket(descriptor_);
}

bool RawConnection::Send(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::send(descriptor_, bytes.data(), static_cast<int>(bytes.size()), kNoSignal);
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

void RawConnection::FinishSending() {
  ::shutdown(descriptor_, kEndOfSending);
}

void RawConnection::EndWithReset() {
  SetOption(descriptor_, SOL_SOCKET, SO_LINGER, linger{1, 0});
}

bool RawConnection::HasAnswer(std::chrono::milliseconds limit) {
  pollfd readable{};
  readable.fd = descriptor_;
  readable.events = POLLIN;
  return Poll(readable, static_cast<int>(limit.count())) > 0;
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

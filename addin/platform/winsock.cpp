#include "addin/platform/winsock.h"

#include <winsock2.h>

namespace vek {

static_assert(SocketLayer::kInvalid == INVALID_SOCKET);

int WinsockSockets::Startup(std::uint16_t version) {
  WSADATA details{};
  return ::WSAStartup(version, &details);
}

void WinsockSockets::Cleanup() {
  ::WSACleanup();
}

SocketLayer::Handle WinsockSockets::OpenStream() {
  return ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
}

void WinsockSockets::ReuseAddress(Handle socket) {
  const int on = 1;
  ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, reinterpret_cast<const char*>(&on), sizeof on);
}

bool WinsockSockets::Bind(Handle socket, std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = ::htonl(INADDR_ANY);
  address.sin_port = ::htons(port);
  return ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

bool WinsockSockets::Listen(Handle socket, int backlog) {
  return ::listen(socket, backlog) == 0;
}

int WinsockSockets::SelectForReading(Handle socket, std::chrono::microseconds limit) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(limit);
  timeval wait{};
  wait.tv_sec = static_cast<long>(seconds.count());
  wait.tv_usec = static_cast<long>((limit - seconds).count());
  fd_set readable;
  readable.fd_count = 1;
  readable.fd_array[0] = socket;
  // The first argument has no meaning here.
  return ::select(0, &readable, nullptr, nullptr, &wait);
}

SocketLayer::Handle WinsockSockets::Accept(Handle socket) {
  return ::accept(socket, nullptr, nullptr);
}

void WinsockSockets::SetNonBlocking(Handle socket) {
  u_long on = 1;
  ::ioctlsocket(socket, FIONBIO, &on);
}

int WinsockSockets::Receive(Handle socket, char* buffer, int size) {
  return ::recv(socket, buffer, size, 0);
}

int WinsockSockets::Send(Handle socket, const char* bytes, int size) {
  return ::send(socket, bytes, size, 0);
}

void WinsockSockets::Close(Handle socket) {
  ::closesocket(socket);
}

}  // namespace vek

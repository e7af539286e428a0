// The socket calls that the listener makes, and no others: Winsock behind them in the add-in, POSIX in the
// tests.
//
// The calls keep the shape of the system's own: a count, or a number below 1 for an end or a failure. A call
// on an invalid or closed handle fails and does nothing else; the server relies on that when it is stopped in
// the middle of a request.
#pragma once

#include <chrono>
#include <cstdint>

namespace vek {

class SocketLayer {
 public:
  using Handle = std::uintptr_t;
  static constexpr Handle kInvalid = ~Handle{0};

  virtual ~SocketLayer() = default;

  // Makes the sockets of the asked-for version usable; 0 for done.
  virtual int Startup(std::uint16_t version) = 0;
  virtual void Cleanup() = 0;

  // A new TCP socket, or kInvalid.
  virtual Handle OpenStream() = 0;
  virtual void ReuseAddress(Handle socket) = 0;
  // Binds to `port` on all interfaces.
  virtual bool Bind(Handle socket, std::uint16_t port) = 0;
  virtual bool Listen(Handle socket, int backlog) = 0;

  // Above 0 when the socket can be read within `limit`, which may be 0.
  virtual int SelectForReading(Handle socket, std::chrono::microseconds limit) = 0;
  virtual Handle Accept(Handle socket) = 0;
  virtual void SetNonBlocking(Handle socket) = 0;
  virtual int Receive(Handle socket, char* buffer, int size) = 0;
  virtual int Send(Handle socket, const char* bytes, int size) = 0;
  virtual void Close(Handle socket) = 0;
};

}  // namespace vek

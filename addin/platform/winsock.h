// Sockets of Windows.
#pragma once

#include "addin/platform/sockets.h"

namespace vek {

class WinsockSockets final : public SocketLayer {
 public:
  int Startup(std::uint16_t version) override;
  void Cleanup() override;
  Handle OpenStream() override;
  void ReuseAddress(Handle socket) override;
  bool Bind(Handle socket, std::uint16_t port) override;
  bool Listen(Handle socket, int backlog) override;
  int SelectForReading(Handle socket, std::chrono::microseconds limit) override;
  Handle Accept(Handle socket) override;
  void SetNonBlocking(Handle socket) override;
  int Receive(Handle socket, char* buffer, int size) override;
  int Send(Handle socket, const char* bytes, int size) override;
  void Close(Handle socket) override;
};

}  // namespace vek

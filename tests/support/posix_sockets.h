// Sockets of POSIX systems, for running the server natively.
#pragma once

#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>

#include "addin/platform/sockets.h"

namespace vek::support {

// Handles are numbers of their own that are never used twice, and a descriptor stays open until the last call
// on it has returned: a socket that is closed under a running call can't be mistaken for the next one opened.
class PosixSockets : public SocketLayer {
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

  // The port that the last Bind took; the system chooses one when it is asked for port 0.
  int BoundPort() const { return bound_port_; }
  // Startups that no Cleanup has met yet.
  int OpenStartups() const { return startups_; }
  // Handles given out and not closed.
  std::size_t OpenHandles() const;

 private:
  class Descriptor;

  Handle Keep(int descriptor);
  std::shared_ptr<Descriptor> Find(Handle socket) const;

  mutable std::mutex mutex_;
  std::map<Handle, std::shared_ptr<Descriptor>> open_;
  Handle next_ = 1;
  std::atomic<int> bound_port_{0};
  std::atomic<int> startups_{0};
};

}  // namespace vek::support

// A connection to another program, as the platform has it. One file a platform; nothing waits in it but
// Await.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "bridge/address.h"

namespace vek::bridge {

class StreamSocket {
 public:
  StreamSocket() = default;
  ~StreamSocket();
  StreamSocket(const StreamSocket&) = delete;
  StreamSocket& operator=(const StreamSocket&) = delete;

  // Begins to connect; false when that can't even begin. Once the socket is ready for sending, IsConnected
  // tells the outcome.
  bool BeginConnecting(const Address& address);
  bool IsConnected() const;

  enum class Readiness { kSending, kReceiving };
  // Waits until the socket is ready, or has failed; false when the time is over first.
  bool Await(Readiness readiness, std::chrono::milliseconds limit) const;

  // How many bytes went; negative when the connection is lost.
  std::ptrdiff_t Send(std::string_view bytes);

  // How many bytes came; 0 at the end, negative when the connection is lost.
  std::ptrdiff_t Receive(char* buffer, std::size_t size);

  // Tells the other side that nothing more will come.
  void EndSending();

 private:
  static constexpr std::uintptr_t kNone = ~std::uintptr_t{0};
  std::uintptr_t handle_ = kNone;
};

}  // namespace vek::bridge

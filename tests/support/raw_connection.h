// A client's end of one TCP connection to this machine, byte by byte.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace vek::support {

class RawConnection {
 public:
  // Connects, or throws std::runtime_error.
  explicit RawConnection(int port);
  ~RawConnection();
  RawConnection(const RawConnection&) = delete;
  RawConnection& operator=(const RawConnection&) = delete;

  // Sends all of `bytes`; false when the other end is gone.
  bool Send(std::string_view bytes);
  // Tells the other end that nothing more comes; what it sends can still be read.
  void FinishSending();
  // Lets the connection's end, whenever it comes, be a reset.
  void EndWithReset();
  // Whether something, the end included, can be read within `limit`.
  bool HasAnswer(std::chrono::milliseconds limit);
  // All that comes until the other end closes, or throws std::runtime_error after `limit` of silence.
  std::string ReadToEnd(std::chrono::milliseconds limit = std::chrono::seconds(10));

 private:
  int descriptor_;
};

}  // namespace vek::support

// The kernel's end of the wire: lines over a loopback TCP connection.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <thread>

namespace bench::kernel {

class Connection {
 public:
  // Connects to 127.0.0.1:port. Throws std::system_error. From then on the process ends at once, with 0, when
  // the other side closes: nobody waits for a computation that is still running, and none looks for a closed
  // connection by itself.
  explicit Connection(int port);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // Answers line after line until the other side closes. Throws std::system_error when the connection breaks.
  void Serve(const std::function<std::string(std::string_view line)>& answer);

 private:
  void Send(std::string_view bytes);

  int socket_ = -1;
  std::jthread watch_;
};

}  // namespace bench::kernel

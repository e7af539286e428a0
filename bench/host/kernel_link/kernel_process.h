// One running geometry kernel: its process and its connection.
#pragma once

#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace bench {

// The connection broke: the kernel died. Another kernel may do better.
class KernelLost : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The kernel can't be started, or it doesn't answer in time: asking again would only cost as much again.
class KernelGivenUp : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class KernelProcess {
 public:
  using Deadline = std::chrono::steady_clock::time_point;

  // Starts the program with the port of a loopback listener and waits for it to connect. Throws
  // KernelGivenUp.
  static KernelProcess Start(const std::wstring& program, std::chrono::milliseconds timeout);

  KernelProcess(KernelProcess&& other) noexcept;
  KernelProcess& operator=(KernelProcess&&) = delete;
  // Closes the connection, on which the kernel ends; one that runs on in spite of it is ended.
  ~KernelProcess();

  // Whether the connection stands and nothing unasked has come.
  bool IsConnected() const;

  // Both throw KernelLost and KernelGivenUp. The line comes without its end.
  void Send(std::string_view bytes, Deadline deadline);
  std::string ReceiveLine(Deadline deadline);

 private:
  KernelProcess() = default;

  std::uintptr_t socket_ = 0;
  void* process_ = nullptr;  // null where the system gives no handle on a native program
  std::string received_;
};

}  // namespace bench

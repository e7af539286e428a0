// The host's side of the wire to the geometry kernel.
//
// The kernel is started at the first request and again after it died or was given up; a request is asked once
// more of a kernel that was started for it, since each carries all that it needs. What went wrong is
// complained about on the console.
#pragma once

#include <chrono>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace bench {

class KernelClient {
 public:
  KernelClient();
  ~KernelClient();

  // The kernel's program: a Windows path, or that of a native program ("/x/y/creokernel") under Wine. A
  // running kernel of another program is stopped.
  void SetProgram(std::wstring path);

  // How long a kernel may take to connect, and to answer one request.
  void SetTimeouts(std::chrono::milliseconds start, std::chrono::milliseconds answer);

  // Asks for `what` ("regenerate", "export", …). `fields` are the request's further members as they stand in
  // a JSON object (`"recipes": [...]`). Gives the answer's "ok"; nothing when there is none.
  std::optional<nlohmann::json> Ask(std::string_view what, std::string_view fields);

  // How many requests were sent since the process began.
  int RequestsSent() const;

  // Lets the kernel go: it ends when its connection closes.
  void Stop();

 private:
  class Connection;
  std::unique_ptr<Connection> Start();

  std::wstring program_;
  std::chrono::milliseconds start_timeout_{30'000};
  std::chrono::milliseconds answer_timeout_{60'000};
  std::unique_ptr<Connection> connection_;
  int last_request_ = 0;
};

}  // namespace bench

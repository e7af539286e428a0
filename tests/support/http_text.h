// Requests to the add-in and its answers, as they go over the wire.
#pragma once

#include <string>

namespace vek::support {

// A request with its length.
inline std::string RequestText(const std::string& method, const std::string& path,
                               const std::string& body = {}) {
  return method + " " + path +
         " HTTP/1.1\r\nHost: localhost\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

struct Answer {
  int status = 0;    // 0 when the connection closed without an answer
  std::string head;  // status line and headers
  std::string body;
};

// Takes an answer apart.
inline Answer ParseAnswer(const std::string& bytes) {
  const auto blank_line = bytes.find("\r\n\r\n");
  if (!bytes.starts_with("HTTP/1.1 ") || blank_line == std::string::npos) return {};
  return {std::stoi(bytes.substr(9, 3)), bytes.substr(0, blank_line), bytes.substr(blank_line + 4)};
}

}  // namespace vek::support

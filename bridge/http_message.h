// The little of HTTP/1.1 that the add-in speaks: one request a connection, an answer with its length.
#pragma once

#include <string>
#include <string_view>

#include "bridge/address.h"

namespace vek::bridge {

std::string ExecuteRequest(const Address& address, std::string_view body);

struct HttpAnswer {
  enum class State { kIncomplete, kComplete, kForeign };  // foreign: what came is no HTTP
  State state = State::kIncomplete;
  int status = 0;
  std::string body;
};

// What the bytes that have come so far amount to; `ended` tells that no more will come, which completes an
// answer that does not tell its length.
HttpAnswer ReadHttpAnswer(std::string_view bytes, bool ended);

}  // namespace vek::bridge

// JSON-RPC 2.0: its messages taken apart and put together.
#pragma once

#include <stdexcept>
#include <string>

#include "bridge/json.h"

namespace vek::bridge {

enum class RpcErrorCode {
  kParseError = -32700,
  kInvalidRequest = -32600,
  kUnknownMethod = -32601,
  kInvalidParams = -32602,
  kInternalError = -32603,
};

// A request that can't be served, on its way to its answer.
class RpcError : public std::runtime_error {
 public:
  RpcError(RpcErrorCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
  RpcErrorCode code() const { return code_; }

 private:
  RpcErrorCode code_;
};

class InvalidParams : public RpcError {
 public:
  explicit InvalidParams(const std::string& message) : RpcError(RpcErrorCode::kInvalidParams, message) {}
};

struct Message {
  // An answer to a request is nothing that is waited for here: no requests are made.
  enum class Kind { kRequest, kNotification, kAnswer, kInvalid };
  Kind kind = Kind::kInvalid;
  Json id;  // null without one; of an invalid message where it can be told
  std::string method;
  Json params = Json::object();
  std::string mistake;  // of an invalid message
};

Message ReadMessage(const Json& json);

Json RpcResult(const Json& id, Json result);
Json RpcErrorAnswer(const Json& id, RpcErrorCode code, const std::string& message);
Json RpcNotification(const char* method, Json params);

}  // namespace vek::bridge

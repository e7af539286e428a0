#include "bridge/rpc.h"

#include <utility>

namespace vek::bridge {
namespace {

constexpr char kVersionOfRpc[] = "2.0";

// Requests of this protocol have a text or an integer; other numbers have no sure way back.
bool IsId(const Json& value) {
  return value.is_string() || value.is_number_integer();
}

Message Invalid(Json id, std::string mistake) {
  Message message;
  message.id = std::move(id);
  message.mistake = std::move(mistake);
  return message;
}

}  // namespace

Message ReadMessage(const Json& json) {
  if (!json.is_object()) return Invalid(nullptr, "A message is an object.");
  const Json* const id = FindMember(json, "id");
  const Json known_id = id != nullptr && IsId(*id) ? *id : Json();
  const Json* const version = FindMember(json, "jsonrpc");
  if (version == nullptr || *version != kVersionOfRpc) return Invalid(known_id, "'jsonrpc' must be \"2.0\".");
  const Json* const method = FindMember(json, "method");
  Message message;
  message.id = known_id;
  if (method == nullptr && (json.contains("result") || json.contains("error"))) {
    message.kind = Message::Kind::kAnswer;
    return message;
  }
  if (method == nullptr || !method->is_string()) return Invalid(known_id, "'method' must be a text.");
  if (id != nullptr && known_id.is_null()) return Invalid(nullptr, "'id' must be a text or an integer.");
  message.kind = id != nullptr ? Message::Kind::kRequest : Message::Kind::kNotification;
  message.method = method->get<std::string>();
  if (const Json* const params = FindMember(json, "params")) message.params = *params;
  return message;
}

Json RpcResult(const Json& id, Json result) {
  return {{"jsonrpc", kVersionOfRpc}, {"id", id}, {"result", std::move(result)}};
}

Json RpcErrorAnswer(const Json& id, RpcErrorCode code, const std::string& message) {
  return {{"jsonrpc", kVersionOfRpc},
          {"id", id},
          {"error", {{"code", static_cast<int>(code)}, {"message", message}}}};
}

Json RpcNotification(const char* method, Json params) {
  return {{"jsonrpc", kVersionOfRpc}, {"method", method}, {"params", std::move(params)}};
}

}  // namespace vek::bridge

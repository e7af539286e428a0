#include "bridge/server.h"

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

#include "bridge/tools.h"
#include "bridge/version.h"

namespace vek::bridge {
namespace {

// Newest first: the one that is offered to a client that asks for another.
constexpr std::array<std::string_view, 3> kProtocolVersions = {"2025-06-18", "2025-03-26", "2024-11-05"};

constexpr char kInstructions[] =
    "These tools drive the Creo Parametric session that runs on this machine. Lengths are millimetres and "
    "angles degrees, whatever the model's units. Most operations act on the active document; "
    "api_document_info tells which that is. A solid begins with a sketch (api_sketch_create, then its "
    "geometry) and becomes a feature of it (api_feature_extrude and its like). Run several operations with "
    "the tool batch. A failed operation says why in its message. Check what came of your work with "
    "api_analysis_mass_properties, api_analysis_bounding_box and api_feature_list, and look at it with "
    "api_export_screenshot.";

Json InitializeResult(const Json& params) {
  const Json* const asked = FindMember(params, "protocolVersion");
  if (asked == nullptr || !asked->is_string()) throw InvalidParams("'protocolVersion' is required.");
  const auto known = std::ranges::find(kProtocolVersions, asked->get<std::string>());
  return {{"protocolVersion", known != kProtocolVersions.end() ? *known : kProtocolVersions.front()},
          {"capabilities", {{"tools", Json::object()}}},
          {"serverInfo", {{"name", "vek-mcp"}, {"title", "VekCreoAddin"}, {"version", kVersion}}},
          {"instructions", kInstructions}};
}

// The token under which the client wants to hear of progress; null when it doesn't.
Json ReadProgressToken(const Json& params) {
  const Json* const meta = FindMember(params, "_meta");
  const Json* const token = meta != nullptr ? FindMember(*meta, "progressToken") : nullptr;
  if (token == nullptr) return nullptr;
  if (!token->is_string() && !token->is_number_integer())
    throw InvalidParams("'progressToken' must be a text or an integer.");
  return *token;
}

}  // namespace

// The answers to one line. Those to an array of requests are an array, written when the last of them is
// known.
class Server::Replies {
 public:
  Replies(Server& server, bool grouped, std::size_t expected)
      : server_(server), grouped_(grouped), expected_(expected) {}

  void Add(Json answer) {
    if (!grouped_) return server_.Write(answer);
    const std::lock_guard lock(mutex_);
    answers_.push_back(std::move(answer));
    WriteWhenComplete();
  }

  // What needs no answer, or gets none any more.
  void Skip() {
    const std::lock_guard lock(mutex_);
    --expected_;
    WriteWhenComplete();
  }

 private:
  void WriteWhenComplete() {
    if (grouped_ && !answers_.empty() && answers_.size() == expected_) server_.Write(answers_);
  }

  Server& server_;
  const bool grouped_;
  std::mutex mutex_;
  std::size_t expected_;
  Json answers_ = Json::array();
};

struct Server::Call {
  Json id;
  ToolCall call;
  Json progress_token;
  std::shared_ptr<Replies> replies;
  std::atomic<bool> cancelled = false;
};

Server::Server(const Catalogue& catalogue, Creo& creo, WriteLine write_line)
    : catalogue_(catalogue), creo_(creo), write_line_(std::move(write_line)), worker_([this] { Work(); }) {}

Server::~Server() {
  Finish();
}

void Server::Take(std::string_view line) {
  if (line.find_first_not_of(" \t\r") == std::string_view::npos) return;
  const auto json = ReadJson(line);
  if (!json) return Write(RpcErrorAnswer(nullptr, RpcErrorCode::kParseError, "The line is no JSON."));
  if (!json->is_array()) return TakeMessage(*json, std::make_shared<Replies>(*this, false, 1));
  if (json->empty())
    return Write(RpcErrorAnswer(nullptr, RpcErrorCode::kInvalidRequest, "The array holds no message."));
  const auto replies = std::make_shared<Replies>(*this, true, json->size());
  for (const Json& message : *json) TakeMessage(message, replies);
}

void Server::Finish() {
  {
    const std::lock_guard lock(mutex_);
    finishing_ = true;
  }
  changed_.notify_all();
  if (worker_.joinable()) worker_.join();
}

void Server::TakeMessage(const Json& json, const std::shared_ptr<Replies>& replies) {
  const Message message = ReadMessage(json);
  switch (message.kind) {
    case Message::Kind::kRequest:
      return TakeRequest(message, replies);
    case Message::Kind::kInvalid:
      return replies->Add(RpcErrorAnswer(message.id, RpcErrorCode::kInvalidRequest, message.mistake));
    case Message::Kind::kNotification:
      TakeNotification(message);
      return replies->Skip();
    case Message::Kind::kAnswer:
      return replies->Skip();
  }
}

void Server::TakeRequest(const Message& message, const std::shared_ptr<Replies>& replies) {
  try {
    if (!message.params.is_object()) throw InvalidParams("'params' must be an object.");
    if (message.method == "tools/call") return QueueCall(message, replies);
    replies->Add(RpcResult(message.id, Result(message)));
  } catch (const RpcError& error) {
    replies->Add(RpcErrorAnswer(message.id, error.code(), error.what()));
  }
}

Json Server::Result(const Message& message) const {
  if (message.method == "initialize") return InitializeResult(message.params);
  if (message.method == "ping") return Json::object();
  if (message.method == "tools/list") {
    // There is one page, and so no place to go on from.
    if (message.params.contains("cursor")) throw InvalidParams("Unknown cursor.");
    return {{"tools", ListTools(catalogue_)}};
  }
  throw RpcError(RpcErrorCode::kUnknownMethod, "Unknown method: " + message.method);
}

void Server::TakeNotification(const Message& message) {
  if (message.method != "notifications/cancelled") return;
  const Json* const id = FindMember(message.params, "requestId");
  if (id == nullptr) return;
  const std::lock_guard lock(mutex_);
  for (const auto& call : calls_)
    if (call->id == *id) call->cancelled = true;
}

void Server::QueueCall(const Message& message, const std::shared_ptr<Replies>& replies) {
  auto call = std::make_shared<Call>();
  call->id = message.id;
  call->call = ReadToolCall(message.params, catalogue_);
  call->progress_token = ReadProgressToken(message.params);
  call->replies = replies;
  {
    const std::lock_guard lock(mutex_);
    calls_.push_back(std::move(call));
  }
  changed_.notify_all();
}

void Server::Work() {
  for (;;) {
    std::shared_ptr<Call> call;
    {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] { return finishing_ || !calls_.empty(); });
      if (calls_.empty()) return;
      call = calls_.front();
    }
    Answer(*call);
    const std::lock_guard lock(mutex_);
    calls_.pop_front();
  }
}

void Server::Answer(Call& call) {
  Follower follower;
  follower.wanted = [&call] { return !call.cancelled; };
  follower.progress = [this, &call](double done, const std::string& message) {
    if (call.progress_token.is_null() || call.cancelled) return;
    Write(RpcNotification("notifications/progress", {{"progressToken", call.progress_token},
                                                     {"progress", done},
                                                     {"total", call.call.StepCount()},
                                                     {"message", message}}));
  };
  Json answer;
  try {
    answer = RpcResult(call.id, RunToolCall(call.call, catalogue_, creo_, follower));
  } catch (const std::exception& error) {
    answer = RpcErrorAnswer(call.id, RpcErrorCode::kInternalError, error.what());
  }
  // A cancelled request gets no answer.
  if (call.cancelled) return call.replies->Skip();
  call.replies->Add(std::move(answer));
}

void Server::Write(const Json& message) {
  const std::string line = WriteJson(message);
  const std::lock_guard lock(writing_);
  write_line_(line);
}

}  // namespace vek::bridge

// What a client sends, through the server itself: its reading in pieces, its routes, its answer. Only the
// sockets are played. The first byte says how the rest is meant (even: as it is; odd: as the body of a
// batch), the second how many bytes arrive at a time, 0 for all.
//
// A request is answered exactly when its first line has two blanks. An answer is a whole message, its length
// is right, and what calls itself JSON is. A batch in ASCII is answered alike however it is cut, and what its
// operations were given comes back as it stood in the request.
#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <nlohmann/json.hpp>
#include <vector>

#include "addin/server/json_reader.h"
#include "addin/server/web_server.h"
#include "tests/fuzz/fuzz_text.h"
#include "tests/support/captured_log.h"

using nlohmann::json;
using vek::fuzz::Require;

namespace {

using namespace std::chrono_literals;

// One connection after the other, each with a client that says its piece and falls silent.
class PlayedSockets : public vek::SocketLayer {
 public:
  // Hands a connection to the server and gives what the server sent, once it waits for the next.
  template <typename Meanwhile>
  std::string Play(std::string_view bytes, std::size_t piece, Meanwhile meanwhile) {
    std::unique_lock lock(mutex_);
    unread_ = bytes;
    piece_ = piece == 0 ? std::max<std::size_t>(bytes.size(), 1) : piece;
    sent_.clear();
    idle_ = false;
    waiting_ = true;
    changed_.notify_all();
    while (!changed_.wait_for(lock, 50us, [this] { return idle_; })) {
      lock.unlock();
      meanwhile();
      lock.lock();
    }
    return std::move(sent_);
  }

  int Startup(std::uint16_t) override { return 0; }
  void Cleanup() override {}
  Handle OpenStream() override { return kListener; }
  void ReuseAddress(Handle) override {}
  bool Bind(Handle, std::uint16_t) override { return true; }
  bool Listen(Handle, int) override { return true; }

  int SelectForReading(Handle socket, std::chrono::microseconds) override {
    std::unique_lock lock(mutex_);
    if (socket != kListener) return unread_.empty() ? 0 : 1;
    idle_ = true;
    changed_.notify_all();
    changed_.wait(lock, [this] { return waiting_; });
    idle_ = waiting_ = false;
    return 1;
  }

  Handle Accept(Handle) override { return kClient; }
  void SetNonBlocking(Handle) override {}

  int Receive(Handle, char* buffer, int size) override {
    const std::lock_guard lock(mutex_);
    const std::size_t count = std::min({unread_.size(), piece_, static_cast<std::size_t>(size)});
    unread_.copy(buffer, count);
    unread_.remove_prefix(count);
    return static_cast<int>(count);
  }

  int Send(Handle, const char* bytes, int size) override {
    const std::lock_guard lock(mutex_);
    Require(sent_.empty());
    sent_.assign(bytes, static_cast<std::size_t>(size));
    return size;
  }

  void Close(Handle) override {}

 private:
  static constexpr Handle kListener = 1, kClient = 2;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::string_view unread_;
  std::size_t piece_ = 1;
  std::string sent_;
  bool waiting_ = false;  // a connection that the server hasn't seen
  bool idle_ = false;     // the server waits for one
};

// Never destroyed: its thread lives as long as the process.
class PlayedServer {
 public:
  static PlayedServer& TheOne() {
    static PlayedServer& server = *new PlayedServer;
    return server;
  }

  std::string Exchange(std::string_view request, std::size_t piece) {
    const std::string answer = sockets_.Play(request, piece, [this] { bridge_.Pump(); });
    vek::support::ClearCapturedLog();
    return answer;
  }

 private:
  PlayedServer() : bridge_(1h), server_(sockets_, bridge_) {
    provider_.RegisterOperation(L"echo",
                                [](const std::wstring& text) { return vek::MakeSuccessResult(text); });
    provider_.RegisterOperation(L"throw", [](const std::wstring& text) -> vek::CreoMcpOperationResult {
      throw std::runtime_error(vek::EncodeUtf8(text));
    });
    provider_.RegisterOperation(L"api_document_close", [](const std::wstring& text) {
      return vek::CreoMcpOperationResult{text == L"{}", text, L"null"};
    });
    bridge_.Publish(&provider_);
    Require(server_.Start());
  }

  PlayedSockets sockets_;
  vek::CreoMcpProvider provider_;
  vek::CreoMcpMainThread bridge_;
  vek::VekWebServer server_;
};

bool HasRequestLine(std::string_view bytes) {
  const std::size_t end = std::min(bytes.find("\r\n"), bytes.size());
  std::string_view line = bytes.substr(0, end);
  if (end == bytes.size()) {
    if (line.find('\n') == std::string_view::npos) return false;
    line = line.substr(0, line.find('\n'));
  }
  return std::count(line.begin(), line.end(), ' ') >= 2;
}

struct Answer {
  int status = 0;
  std::string body;
  bool is_json = false;
};

Answer ReadAnswer(const std::string& bytes) {
  const std::size_t head_end = bytes.find("\r\n\r\n");
  Require(bytes.starts_with("HTTP/1.1 ") && head_end != std::string::npos);
  Answer answer{std::stoi(bytes.substr(9, 3)), bytes.substr(head_end + 4)};
  const std::string head = bytes.substr(0, head_end + 2);
  const auto lines = std::count(head.begin(), head.end(), '\n');
  Require(lines == 7 && std::count(head.begin(), head.end(), '\r') == lines);
  Require(head.find("\r\nContent-Length: " + std::to_string(answer.body.size()) + "\r\n") !=
          std::string::npos);
  answer.is_json = head.find("\r\nContent-Type: application/json") != std::string::npos;
  const auto known = {200, 204, 400, 404, 500, 503, 504};
  Require(std::ranges::find(known, answer.status) != known.end());
  if (answer.is_json) Require(json::accept(answer.body));
  return answer;
}

void SendAsItIs(std::string_view request, std::size_t piece) {
  const std::string answer = PlayedServer::TheOne().Exchange(request, piece);
  Require(answer.empty() != HasRequestLine(request));
  if (!answer.empty()) ReadAnswer(answer);
}

// The results against what the body says when it is read at once.
void CheckResults(const std::string& body, const json& answer) {
  vek::OperationList operations;
  std::wstring error;
  const std::wstring text = vek::fuzz::TextOf(body);
  const bool read = vek::ParseOperationsObject(vek::JsonFindAnywhere(text, L"operations"), operations, error);
  Require(read == answer.contains("results"));
  if (!read) return Require(!answer.at("error").get<std::string>().empty());
  for (const vek::OperationCall& each : operations) {
    const json& result = answer.at("results").at(vek::EncodeUtf8(each.name));
    Require(result.size() == 3 && result.at("data").is_null() && result.at("success").is_boolean());
    if (each.name != L"echo" || !result.at("success").get<bool>()) continue;
    const auto given = [&](const vek::OperationCall& call) {
      return call.name == each.name &&
             vek::EncodeUtf8(call.arguments) == result.at("message").get<std::string>();
    };
    Require(std::ranges::any_of(operations, given));
  }
}

void SendAsBatch(const std::string& body, std::size_t piece) {
  const std::string request =
      "POST /execute HTTP/1.1\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
  const std::string whole = PlayedServer::TheOne().Exchange(request, 0);
  const Answer answer = ReadAnswer(whole);
  Require(answer.is_json && (answer.status == 200 || answer.status == 400));
  if (!body.empty()) CheckResults(body, json::parse(answer.body));
  if (vek::fuzz::IsAscii(body)) Require(PlayedServer::TheOne().Exchange(request, piece) == whole);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::string_view bytes = vek::fuzz::Bytes(data + 2, size - 2);
  if (data[0] % 2 == 0) {
    SendAsItIs(bytes, data[1]);
  } else {
    SendAsBatch(std::string(bytes), data[1]);
  }
  return 0;
}

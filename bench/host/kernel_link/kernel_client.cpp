#include "bench/host/kernel_link/kernel_client.h"

#include <nlohmann/json.hpp>

#include "bench/host/host.h"
#include "bench/host/kernel_link/kernel_answer.h"
#include "bench/host/kernel_link/kernel_process.h"
#include "bench/host/text.h"

namespace bench {

// A kernel that is connected. Its failures are exceptions that say whether asking another kernel makes sense.
class KernelClient::Connection {
 public:
  explicit Connection(KernelProcess process) : process_(std::move(process)) {}

  bool IsAlive() const { return process_.IsConnected(); }

  std::string Exchange(const std::string& request, std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    process_.Send(request, deadline);
    return process_.ReceiveLine(deadline);
  }

 private:
  KernelProcess process_;
};

namespace {

// The "ok" of an answer to the request with that id.
std::optional<nlohmann::json> ReadAnswer(const std::string& line, int id) {
  KernelAnswer answer = ReadKernelAnswer(line, id);
  if (!answer.is_asked_for) throw KernelLost("the geometry kernel answered what no one asked");
  if (!answer.ok) Complain("the geometry kernel rejects a request: " + answer.rejection);
  return std::move(answer.ok);
}

}  // namespace

KernelClient::KernelClient() = default;
KernelClient::~KernelClient() = default;

void KernelClient::SetProgram(std::wstring path) {
  if (path == program_) return;
  Stop();
  program_ = std::move(path);
}

void KernelClient::SetTimeouts(std::chrono::milliseconds start, std::chrono::milliseconds answer) {
  start_timeout_ = start;
  answer_timeout_ = answer;
}

int KernelClient::RequestsSent() const {
  return last_request_;
}

void KernelClient::Stop() {
  connection_.reset();
}

std::unique_ptr<KernelClient::Connection> KernelClient::Start() {
  return std::make_unique<Connection>(KernelProcess::Start(program_, start_timeout_));
}

std::optional<nlohmann::json> KernelClient::Ask(std::string_view what, std::string_view fields) {
  const int id = ++last_request_;
  std::string request = R"({"id":)" + std::to_string(id) + R"(,"do":")" + std::string(what) + '"';
  if (!fields.empty()) request.append(",").append(fields);
  request += "}\n";

  // A kernel may have died while nobody asked it anything; that one is replaced without a word lost.
  if (connection_ && !connection_->IsAlive()) {
    Complain("the geometry kernel has ended; it is started again");
    Stop();
  }
  for (int attempt = 1;; ++attempt) {
    try {
      if (!connection_) connection_ = Start();
      return ReadAnswer(connection_->Exchange(request, answer_timeout_), id);
    } catch (const KernelLost& loss) {
      Stop();
      Complain(loss.what());
      if (attempt == 2) return std::nullopt;
    } catch (const KernelGivenUp& reason) {
      Stop();
      Complain(reason.what());
      return std::nullopt;
    }
  }
}

}  // namespace bench

// The add-in on an idle bench, from outside: how long a trivial batch takes, what idling costs, and whether
// memory grows over many requests. Expects the bench on port 4001; takes the process id of the bench host.

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

#include "benchmarks/figure.h"
#include "tests/support/raw_connection.h"

namespace {

using benchmarks::Milliseconds;
using benchmarks::Repeat;

constexpr int kPort = 4001;
constexpr double kTimerPauseMs = 100;
constexpr double kAllowanceMs = 5;
constexpr double kIdleBudgetPercent = 5;
constexpr auto kIdleSpan = std::chrono::seconds(2);
constexpr int kRequestsABlock = 1000;

std::optional<double> AnswerMs(const std::string& request) {
  std::string answer;
  const double milliseconds = Milliseconds([&] {
    vek::support::RawConnection connection(kPort);
    connection.Send(request);
    answer = connection.ReadToEnd();
  });
  if (answer.rfind("HTTP/1.1 200", 0) == 0) return milliseconds;
  std::fprintf(stderr, "the add-in doesn't answer with 200: %.80s\n", answer.c_str());
  return std::nullopt;
}

// User and system time that a process has taken so far.
std::optional<double> ProcessorMs(pid_t process) {
  clockid_t clock{};
  timespec time{};
  if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &time) != 0) return std::nullopt;
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// The share of one core that a process takes while nobody asks it anything.
std::optional<double> IdlePercent(pid_t process) {
  const auto before = ProcessorMs(process);
  const double span = Milliseconds([] { std::this_thread::sleep_for(kIdleSpan); });
  const auto after = ProcessorMs(process);
  if (!before || !after) return std::nullopt;
  return 100 * (*after - *before) / span;
}

std::optional<double> ResidentKb(pid_t process) {
  std::ifstream pages("/proc/" + std::to_string(process) + "/statm");
  long all = 0, resident = 0;
  if (!(pages >> all >> resident)) return std::nullopt;
  return static_cast<double>(resident * (sysconf(_SC_PAGESIZE) / 1024));
}

// By how much a process has grown behind a block of requests.
std::optional<double> GrowthKb(pid_t process, const std::string& request) {
  const auto before = ResidentKb(process);
  for (int i = 0; i < kRequestsABlock; ++i)
    if (!AnswerMs(request)) return std::nullopt;
  const auto after = ResidentKb(process);
  if (!before || !after) return std::nullopt;
  return *after - *before;
}

bool MeasureAnswers() {
  const std::string body = R"({"operations":{"api_document_list_open":{}}})";
  const std::string execute =
      "POST /execute HTTP/1.1\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
  const std::string health = "GET /health HTTP/1.1\r\n\r\n";

  // An answer comes when the timer has just ticked: what is sent upon it waits for the whole of the pause.
  if (!AnswerMs(execute)) return false;
  const auto longest = Repeat(40, [&] { return AnswerMs(execute); });
  int phase = 0;
  const auto anywhere = Repeat(60, [&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(++phase * 37 % 100));
    return AnswerMs(execute);
  });
  const auto unqueued = Repeat(100, [&] { return AnswerMs(health); });
  if (!longest || !anywhere || !unqueued) return false;
  benchmarks::PrintRow("POST /execute, one trivial operation, right behind a tick", "ms", *longest,
                       kTimerPauseMs + kAllowanceMs);
  benchmarks::PrintRow("- at any moment between two ticks", "ms", *anywhere);
  benchmarks::PrintRow("- GET /health, which waits for no tick", "ms", *unqueued);
  return true;
}

bool MeasureProcess(pid_t process) {
  const auto idle = Repeat(7, [&] { return IdlePercent(process); });
  const std::string health = "GET /health HTTP/1.1\r\n\r\n";
  // The first block warms every pool and buffer up.
  if (!idle || !GrowthKb(process, health)) return false;
  const auto growth = Repeat(10, [&] { return GrowthKb(process, health); });
  if (!growth) return false;
  benchmarks::PrintRow("the idle add-in and its host, of one core", "%", *idle, kIdleBudgetPercent);
  benchmarks::PrintRow("growth of memory by each thousand of ten thousand requests", "kB", *growth, 0);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "http_benchmark PROCESS\n");
    return 2;
  }
  return MeasureAnswers() && MeasureProcess(std::atoi(argv[1])) ? 0 : 1;
}

// The add-in on an idle bench, from outside: how long a trivial batch takes, what idling costs, and whether
// memory grows over many requests. Expects the bench on port 4001; takes the process id of the bench host.

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/raw_connection.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kPort = 4001;
constexpr double kTimerPauseMs = 100;
constexpr double kAllowanceMs = 5;

double MillisecondsSince(Clock::time_point begin) {
  return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

bool Ask(const std::string& request) {
  vek::support::RawConnection connection(kPort);
  connection.Send(request);
  return connection.ReadToEnd().rfind("HTTP/1.1 200", 0) == 0;
}

// User and system time of a process in seconds, and its resident memory in kilobytes.
struct Usage {
  double cpu_seconds = 0;
  long resident_kb = 0;
};

Usage UsageOf(int process) {
  std::ifstream stat("/proc/" + std::to_string(process) + "/stat");
  std::string text((std::istreambuf_iterator<char>(stat)), {});
  std::istringstream fields(text.substr(text.rfind(')') + 2));
  std::vector<std::string> values((std::istream_iterator<std::string>(fields)), {});
  const double ticks = static_cast<double>(sysconf(_SC_CLK_TCK));
  Usage usage;
  usage.cpu_seconds = (std::stod(values[11]) + std::stod(values[12])) / ticks;
  usage.resident_kb = std::stol(values[21]) * (sysconf(_SC_PAGESIZE) / 1024);
  return usage;
}

void Print(const char* what, double measured, double budget, const char* unit) {
  std::printf("%-62s %8.2f %-4s  budget %8.2f  ratio %.2f\n", what, measured, unit, budget,
              measured / budget);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "http_benchmark PROCESS\n");
    return 2;
  }
  const int process = std::atoi(argv[1]);
  const std::string body = R"({"operations":{"api_document_list_open":{}}})";
  const std::string execute =
      "POST /execute HTTP/1.1\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;

  std::vector<double> times;
  for (int i = 0; i < 60; ++i) {
    std::this_thread::sleep_for(
        std::chrono::milliseconds(7 * (i % 13)));  // meets the timer at all its phases
    const auto begin = Clock::now();
    if (!Ask(execute)) return 1;
    times.push_back(MillisecondsSince(begin));
  }
  std::sort(times.begin(), times.end());
  Print("POST /execute, one trivial operation: the slowest of nine in ten", times[times.size() * 9 / 10],
        kTimerPauseMs + kAllowanceMs, "ms");

  const Usage before_idle = UsageOf(process);
  const auto begin = Clock::now();
  std::this_thread::sleep_for(std::chrono::seconds(5));
  const double idle = UsageOf(process).cpu_seconds - before_idle.cpu_seconds;
  Print("the idle add-in, of one core", 100 * idle / (MillisecondsSince(begin) / 1000), 5, "%");

  const std::string health = "GET /health HTTP/1.1\r\n\r\n";
  for (int i = 0; i < 1000; ++i)
    if (!Ask(health)) return 1;  // warms every pool and buffer up
  const long settled = UsageOf(process).resident_kb;
  for (int i = 0; i < 10'000; ++i)
    if (!Ask(health)) return 1;
  std::printf("%-62s %8ld kB    of %ld kB\n", "growth of memory over 10,000 requests",
              UsageOf(process).resident_kb - settled, settled);
  return 0;
}

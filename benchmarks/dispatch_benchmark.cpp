// What the dispatcher adds to the log: one trivial operation inside a batch, its two lines included, against
// the bare cost of writing two such lines.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "addin/platform/log.h"
#include "addin/server/provider.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kCallsARound = 100;
constexpr int kRounds = 15;

template <typename Work>
double Seconds(Work&& work) {
  const auto begin = Clock::now();
  work();
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
  return values[values.size() / 2];
}

}  // namespace

int main() {
  vek::CreoMcpProvider provider;
  provider.RegisterOperation(L"api_trivial",
                             [](const std::wstring&) { return vek::MakeSuccessResult(L"Done."); });
  const vek::OperationList batch(kCallsARound, {L"api_trivial", L"{}"});

  std::vector<double> ratios;
  for (int round = 0; round < kRounds; ++round) {
    const double dispatched = Seconds([&] { provider.ExecuteBatch(batch); });
    const double bare = Seconds([] {
      for (int call = 0; call < kCallsARound; ++call) {
        vek::LogOperation(L"MCP Dispatch BEGIN op='api_trivial' args={}");
        vek::LogOperation(L"MCP Dispatch END   op='api_trivial' success=true message=Done. data=null");
      }
    });
    ratios.push_back(dispatched / bare);
  }
  std::printf("%-62s %8.2f       budget     1.20\n",
              "one trivial operation, of the bare cost of two log lines", Median(ratios));
  return 0;
}

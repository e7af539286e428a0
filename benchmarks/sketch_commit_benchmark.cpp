// Committing the fiftieth line of a sketch that is drawn one line at a time, the kernel included.
#include <cstdio>
#include <optional>
#include <vector>

#include "addin/text/format.h"
#include "benchmarks/host_in_process.h"

namespace {

using benchmarks::HostInProcess;

constexpr double kBudgetMs = 60;
constexpr int kLine = 50;
constexpr int kRounds = 5;

// The time that the fiftieth line takes in a new sketch of a part with a solid in it.
std::optional<double> FiftiethLineMs(HostInProcess& host, int round) {
  const std::wstring sketch = vek::Format(L"ZIGZAG_%d", round);
  if (!host.Run(L"api_sketch_create", vek::Format(LR"({"name":"%s","plane":"XY"})", sketch)))
    return std::nullopt;
  std::optional<double> milliseconds;
  for (int line = 1; line <= kLine; ++line) {
    milliseconds = host.Milliseconds(L"api_sketch_line_two_points",
                                     vek::Format(LR"({"sketch_name":"%s","x1":%d,"y1":%d,"x2":%d,"y2":%d})",
                                                 sketch, line, line % 2, line + 1, (line + 1) % 2));
    if (!milliseconds) return std::nullopt;
  }
  return milliseconds;
}

}  // namespace

int main() {
  HostInProcess host;
  if (!host.Run(L"api_document_new_part") ||
      !host.Run(L"api_sketch_create", LR"({"name":"BLOCK","plane":"XY"})") ||
      !host.Run(L"api_sketch_circle_center_radius", LR"({"sketch_name":"BLOCK","radius":20})") ||
      !host.Run(L"api_feature_extrude", LR"({"sketch_name":"BLOCK","distance_mm":10})"))
    return 1;
  std::vector<double> times;
  for (int round = 0; round < kRounds; ++round) {
    const auto milliseconds = FiftiethLineMs(host, round);
    if (!milliseconds) return 1;
    times.push_back(*milliseconds);
  }
  const double median = benchmarks::Median(times);
  std::printf("%-62s %8.2f ms    budget %8.2f  ratio %.2f\n", "committing the fiftieth line of a sketch",
              median, kBudgetMs, median / kBudgetMs);
  return 0;
}

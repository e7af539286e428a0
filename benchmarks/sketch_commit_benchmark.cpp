// Committing the fiftieth line of a sketch that is drawn one line at a time, the kernel included: the bench host in this
// process, the kernel behind it. The environment names the kernel in VEK_BENCH_KERNEL.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "addin/operations.h"
#include "addin/text/format.h"
#include "bench/host/host.h"

namespace {

constexpr double kBudgetMs = 60;
constexpr int kLine = 50;
constexpr int kRounds = 5;

bool Run(const vek::CreoMcpProvider& provider, const wchar_t* name, const std::wstring& arguments) {
  const auto result = provider.Dispatch(name, arguments);
  if (!result.success) std::fprintf(stderr, "%ls: %ls\n", name, result.message.c_str());
  return result.success;
}

// The time that the fiftieth line takes in a new sketch of a part with a solid in it; negative on a failure.
double FiftiethLineMs(const vek::CreoMcpProvider& provider, int round) {
  const std::wstring sketch = vek::Format(L"ZIGZAG_%d", round);
  if (!Run(provider, L"api_sketch_create", vek::Format(LR"({"name":"%s","plane":"XY"})", sketch))) return -1;
  double milliseconds = 0;
  for (int line = 1; line <= kLine; ++line) {
    const std::wstring arguments =
        vek::Format(LR"({"sketch_name":"%s","x1":%d,"y1":%d,"x2":%d,"y2":%d})", sketch, line, line % 2, line + 1,
                    (line + 1) % 2);
    const auto begin = std::chrono::steady_clock::now();
    if (!Run(provider, L"api_sketch_line_two_points", arguments)) return -1;
    milliseconds = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
  }
  return milliseconds;
}

}  // namespace

int main() {
  wchar_t kernel[MAX_PATH] = L"";
  GetEnvironmentVariableW(L"VEK_BENCH_KERNEL", kernel, MAX_PATH);
  bench::TheHost().Reset();
  bench::TheHost().kernel.SetProgram(kernel);

  const vek::CreoMcpProvider provider = vek::BuildProvider();
  bool ready = Run(provider, L"api_document_new_part", L"{}") &&
               Run(provider, L"api_sketch_create", LR"({"name":"BLOCK","plane":"XY"})") &&
               Run(provider, L"api_sketch_circle_center_radius", LR"({"sketch_name":"BLOCK","radius":20})") &&
               Run(provider, L"api_feature_extrude", LR"({"sketch_name":"BLOCK","distance_mm":10})");
  std::vector<double> times;
  for (int round = 0; ready && round < kRounds; ++round) {
    times.push_back(FiftiethLineMs(provider, round));
    ready = times.back() >= 0;
  }
  bench::TheHost().kernel.Stop();
  if (!ready) return 1;
  std::nth_element(times.begin(), times.begin() + kRounds / 2, times.end());
  const double median = times[kRounds / 2];
  std::printf("%-62s %8.2f ms    budget %8.2f  ratio %.2f\n", "committing the fiftieth line of a sketch", median,
              kBudgetMs, median / kBudgetMs);
  return 0;
}

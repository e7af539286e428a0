// Committing the fiftieth line of a sketch that is drawn one line at a time, the kernel included.
#include <cstdio>
#include <optional>

#include "addin/text/format.h"
#include "benchmarks/host_in_process.h"

namespace {

using benchmarks::HostInProcess;

constexpr double kBudgetMs = 60;
constexpr int kLines = 50;
constexpr int kSketches = 7;

// What the first and the last line of a sketch take.
struct LineMs {
  double first = 0, last = 0;
};

// Draws a new sketch in a part with a solid in it; nothing when that fails.
std::optional<LineMs> DrawSketch(HostInProcess& host, int number) {
  const std::wstring sketch = vek::Format(L"ZIGZAG_%d", number);
  if (!host.Run(L"api_sketch_create", vek::Format(LR"({"name":"%s","plane":"XY"})", sketch)))
    return std::nullopt;
  LineMs drawn;
  for (int line = 1; line <= kLines; ++line) {
    const auto milliseconds = host.Milliseconds(
        L"api_sketch_line_two_points", vek::Format(LR"({"sketch_name":"%s","x1":%d,"y1":%d,"x2":%d,"y2":%d})",
                                                   sketch, line, line % 2, line + 1, (line + 1) % 2));
    if (!milliseconds) return std::nullopt;
    (line == 1 ? drawn.first : drawn.last) = *milliseconds;
  }
  return drawn;
}

}  // namespace

int main() {
  HostInProcess host;
  if (!host.Run(L"api_document_new_part") ||
      !host.Run(L"api_sketch_create", LR"({"name":"BLOCK","plane":"XY"})") ||
      !host.Run(L"api_sketch_circle_center_radius", LR"({"sketch_name":"BLOCK","radius":20})") ||
      !host.Run(L"api_feature_extrude", LR"({"sketch_name":"BLOCK","distance_mm":10})"))
    return 1;
  benchmarks::Sample first, last;
  for (int sketch = benchmarks::Repeats(kSketches); sketch > 0; --sketch) {
    const auto drawn = DrawSketch(host, sketch);
    if (!drawn) return 1;
    first.Add(drawn->first);
    last.Add(drawn->last);
  }
  benchmarks::PrintRow("committing the fiftieth line of a sketch", "ms", last, kBudgetMs);
  benchmarks::PrintRow("- the first one", "ms", first);
  return 0;
}

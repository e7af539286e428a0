// What the dispatcher adds to the log: one trivial operation inside a batch, its two lines included, against
// two such lines that stand ready and are written plainly, in the way that the log writes its own.
#include <windows.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "addin/platform/log.h"
#include "addin/server/provider.h"
#include "benchmarks/figure.h"

namespace {

constexpr int kOperationsATurn = 100;
constexpr int kTurns = 25;
constexpr double kBudget = 1.2;

// Beside the log, so that both lie on the same disk.
constexpr const wchar_t* kPlainPath = L"D:\\VekCreoAddin.benchmark.log";
constexpr std::string_view kPlainLines[] = {
    "[Mon Jan  1 00:00:00 2024] MCP Dispatch BEGIN op='api_trivial' args={}\n",
    "[Mon Jan  1 00:00:00 2024] MCP Dispatch END   op='api_trivial' success=true message=Done. data=null\n"};

enum class Flush { kNo, kYes };

bool WritePlainly(std::string_view line, Flush flush) {
  const HANDLE file = ::CreateFileW(kPlainPath, FILE_APPEND_DATA | SYNCHRONIZE, 0, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  const bool ok = ::WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr) &&
                  (flush == Flush::kNo || ::FlushFileBuffers(file));
  ::CloseHandle(file);
  return ok;
}

// The time for as many pairs of lines as a batch has operations.
std::optional<double> PlainMs(Flush flush) {
  bool ok = true;
  const double milliseconds = benchmarks::Milliseconds([&] {
    for (int pair = 0; pair < kOperationsATurn && ok; ++pair)
      for (const std::string_view line : kPlainLines) ok = ok && WritePlainly(line, flush);
  });
  if (!ok) std::fprintf(stderr, "%ls can't be written\n", kPlainPath);
  return ok ? std::optional(milliseconds) : std::nullopt;
}

}  // namespace

int main() {
  vek::CreoMcpProvider provider;
  provider.RegisterOperation(L"api_trivial",
                             [](const std::wstring&) { return vek::MakeSuccessResult(L"Done."); });
  const vek::OperationList batch(kOperationsATurn, {L"api_trivial", L"{}"});
  const auto batch_ms = [&] { return benchmarks::Milliseconds([&] { provider.ExecuteBatch(batch); }); };
  const auto plain_ms = [] { return PlainMs(Flush::kYes); };
  const auto unflushed_ms = [] { return PlainMs(Flush::kNo); };

  const auto dispatched = benchmarks::Compare(kTurns, batch_ms, plain_ms);
  const auto unflushed = benchmarks::Compare(kTurns, unflushed_ms, plain_ms);
  ::DeleteFileW(kPlainPath);
  if (!dispatched || !unflushed) return 1;
  benchmarks::PrintRow("one trivial operation in a batch, of two lines written plainly", "",
                       dispatched->ratio, kBudget);
  benchmarks::PrintRow("- the two lines without their flush, of them with it", "", unflushed->ratio);
  benchmarks::PrintRow("- a hundred times the two lines", "ms", dispatched->theirs);
  return 0;
}

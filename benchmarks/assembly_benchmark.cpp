// An assembly of five hundred occurrences: how long it takes to be listed, and to find one of them by its
// name, against half as many; and the same of thousands, where what grows with the square would show.
#include <ProAsmcomp.h>
#include <ProModelitem.h>
#include <ProSolid.h>

#include <cstdio>
#include <optional>
#include <string>

#include "addin/host/text_buffer.h"
#include "addin/text/format.h"
#include "benchmarks/host_in_process.h"

namespace {

using benchmarks::HostInProcess;

constexpr double kListingBudgetMs = 1000;
// Twice is linear; the rest is what the clock of a busy machine adds.
constexpr double kGrowthBudget = 2.5;
constexpr int kTurns = 40;

std::wstring NameOf(int occurrence) {
  return vek::Format(L"OCCURRENCE_%d", occurrence);
}

class Assembly {
 public:
  // False when the host refuses something, which is told on standard error.
  bool Make(HostInProcess& host, bench::Model& part, int occurrences) {
    host_ = &host;
    if (!host.Run(L"api_document_new_assembly")) return false;
    model_ = bench::TheHost().CurrentModel();
    for (; count_ < occurrences; ++count_)
      if (!Place(part)) return false;
    return true;
  }

  std::optional<double> ListingMs() { return Milliseconds(L"api_assembly_list_components", L"{}"); }

  // Finds the one at the end, and does nothing with it, since it is active.
  std::optional<double> FindingMs() {
    return Milliseconds(L"api_assembly_unsuppress_occurrence",
                        vek::Format(LR"({"occurrence_name":"%s"})", NameOf(count_ - 1)));
  }

 private:
  static ProSolid Solid(bench::Model* model) { return reinterpret_cast<ProSolid>(model); }

  bool Place(bench::Model& part) {
    ProMatrix place = {{1, 0, 0, 10.0 * count_}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    ProAsmcomp component{};
    ProName name{};
    vek::CopyCut(name, NameOf(count_));
    if (ProAsmcompAssemble(Solid(model_), Solid(&part), place, &component) == PRO_TK_NO_ERROR &&
        ProModelitemNameSet(&component, name) == PRO_TK_NO_ERROR)
      return true;
    std::fprintf(stderr, "occurrence %d can't be placed\n", count_);
    return false;
  }

  // The time of an operation on this assembly; turning to it is none of that.
  std::optional<double> Milliseconds(const wchar_t* operation, const std::wstring& arguments) {
    auto& windows = bench::TheHost().windows;
    const auto window = windows.WindowOf(*model_);
    if (!window || !windows.Activate(*window)) return std::nullopt;
    return host_->Milliseconds(operation, arguments);
  }

  HostInProcess* host_ = nullptr;
  bench::Model* model_ = nullptr;
  int count_ = 0;
};

// Prints how the time to find a name grows when the occurrences become twice as many.
bool PrintGrowth(Assembly& half, Assembly& whole, const char* growth, const char* time) {
  const auto found = benchmarks::Compare(
      kTurns, [&] { return whole.FindingMs(); }, [&] { return half.FindingMs(); });
  if (!found) return false;
  benchmarks::PrintRow(growth, "", found->ratio, kGrowthBudget);
  benchmarks::PrintRow(time, "ms", found->ours);
  return true;
}

}  // namespace

int main() {
  HostInProcess host;
  if (!host.Run(L"api_document_new_part")) return 1;
  bench::Model& part = *bench::TheHost().CurrentModel();
  Assembly small, small_half, large, large_half;
  if (!small.Make(host, part, 500) || !small_half.Make(host, part, 250) || !large.Make(host, part, 4000) ||
      !large_half.Make(host, part, 2000))
    return 1;
  const auto listing = benchmarks::Repeat(kTurns, [&] { return small.ListingMs(); });
  if (!listing) return 1;
  benchmarks::PrintRow("listing an assembly of 500 occurrences", "ms", *listing, kListingBudgetMs);
  return PrintGrowth(small_half, small, "finding one of 500 occurrences by its name, of one of 250",
                     "- that of 500") &&
                 PrintGrowth(large_half, large, "finding one of 4000 occurrences, of one of 2000",
                             "- that of 4000")
             ? 0
             : 1;
}

// An assembly of five hundred occurrences: how long it takes to be listed, and to find one of them by its
// name, against half as many; and the same of thousands, where what grows with the square would show.
#include <ProAsmcomp.h>
#include <ProModelitem.h>
#include <ProSolid.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "addin/host/text_buffer.h"
#include "addin/text/format.h"
#include "benchmarks/host_in_process.h"

namespace {

using benchmarks::HostInProcess;

constexpr int kOccurrences = 500, kMany = 4000;
constexpr double kListingBudgetMs = 1000;
// Twice is linear; the rest is what the clock of a busy machine adds.
constexpr double kGrowthBudget = 2.5;
constexpr int kRounds = 100;

std::wstring NameOf(int occurrence) {
  return vek::Format(L"OCCURRENCE_%d", occurrence);
}

class Assembly {
 public:
  bool Make() {
    if (!host_.Run(L"api_document_new_part")) return false;
    part_ = bench::TheHost().CurrentModel();
    if (!host_.Run(L"api_document_new_assembly")) return false;
    assembly_ = bench::TheHost().CurrentModel();
    return true;
  }

  // False when the host refuses one, which is told on standard error.
  bool GrowTo(int occurrences) {
    for (; count_ < occurrences; ++count_) {
      ProMatrix place = {{1, 0, 0, 10.0 * count_}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
      ProAsmcomp component{};
      ProName name{};
      vek::CopyCut(name, NameOf(count_));
      if (ProAsmcompAssemble(Solid(assembly_), Solid(part_), place, &component) != PRO_TK_NO_ERROR ||
          ProModelitemNameSet(&component, name) != PRO_TK_NO_ERROR) {
        std::fprintf(stderr, "occurrence %d can't be placed\n", count_);
        return false;
      }
    }
    return true;
  }

  std::optional<double> ListingMs() { return ShortestMs(L"api_assembly_list_components", L"{}"); }

  // Finds the one at the end, and does nothing with it, since it is active.
  std::optional<double> FindingMs() {
    return ShortestMs(L"api_assembly_unsuppress_occurrence",
                      vek::Format(LR"({"occurrence_name":"%s"})", NameOf(count_ - 1)));
  }

 private:
  static ProSolid Solid(bench::Model* model) { return reinterpret_cast<ProSolid>(model); }

  std::optional<double> ShortestMs(const wchar_t* operation, const std::wstring& arguments) {
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
      const auto time = host_.Milliseconds(operation, arguments);
      if (!time) return std::nullopt;
      times.push_back(*time);
    }
    // The shortest has the least in it of what else the machine does.
    return *std::ranges::min_element(times);
  }

  HostInProcess host_;
  bench::Model* part_ = nullptr;
  bench::Model* assembly_ = nullptr;
  int count_ = 0;
};

// Prints how the time to find a name grows when the occurrences become twice as many. False when something
// fails.
bool PrintGrowth(Assembly& assembly, int occurrences) {
  if (!assembly.GrowTo(occurrences / 2)) return false;
  const auto among_half = assembly.FindingMs();
  if (!among_half || !assembly.GrowTo(occurrences)) return false;
  const auto among_all = assembly.FindingMs();
  if (!among_all) return false;
  const double growth = *among_all / *among_half;
  std::printf(
      "finding one of %4d occurrences by its name, against %-10d %8.2f times budget %8.2f  ratio %.2f\n",
      occurrences, occurrences / 2, growth, kGrowthBudget, growth / kGrowthBudget);
  std::printf("%-62s %8.2f ms\n", "  that one", *among_all);
  return true;
}

}  // namespace

int main() {
  Assembly assembly;
  if (!assembly.Make() || !PrintGrowth(assembly, kOccurrences)) return 1;
  const auto listing = assembly.ListingMs();
  if (!listing) return 1;
  std::printf("%-62s %8.2f ms    budget %8.2f  ratio %.2f\n", "listing an assembly of 500 occurrences",
              *listing, kListingBudgetMs, *listing / kListingBudgetMs);
  return PrintGrowth(assembly, kMany) ? 0 : 1;
}

// A figure: what is measured several times, and the row of the table in which it is printed.
//
// The spread is given by the quartiles: half of the repeats lie between them. What else a machine does for a
// moment lands in a few repeats and moves neither them nor the median. Two things that are held against each
// other are measured in turns, and a ratio is formed of each turn, so that a slow moment slows both.
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace benchmarks {

// The repeats of one measurement, at least one wherever it is asked for something.
class Sample {
 public:
  void Add(double value) { values_.insert(std::ranges::upper_bound(values_, value), value); }

  std::size_t Repeats() const { return values_.size(); }
  double Median() const { return Quantile(0.5); }

  // Below it lies that share of the values; between two of them it is interpolated.
  double Quantile(double share) const {
    const double place = share * static_cast<double>(values_.size() - 1);
    const auto below = static_cast<std::size_t>(std::floor(place));
    const std::size_t above = std::min(below + 1, values_.size() - 1);
    return std::lerp(values_[below], values_[above], place - std::floor(place));
  }

 private:
  std::vector<double> values_;  // ascending
};

// How often to measure: as often as given, unless VEK_BENCH_REPEATS asks for fewer.
inline int Repeats(int usual) {
  const char* const wanted = std::getenv("VEK_BENCH_REPEATS");
  return wanted ? std::clamp(std::atoi(wanted), 1, usual) : usual;
}

template <typename Work>
double Milliseconds(Work&& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

// Takes each measurement as a number, or as nothing when it failed; then there is no sample.
template <typename Measure>
std::optional<Sample> Repeat(int usual, Measure measure) {
  Sample sample;
  for (int repeat = Repeats(usual); repeat > 0; --repeat) {
    const std::optional<double> value = measure();
    if (!value) return std::nullopt;
    sample.Add(*value);
  }
  return sample;
}

struct Comparison {
  Sample ours, theirs;
  Sample ratio;  // of ours to theirs
};

// Measures both in turns; the one that went first goes second in the next turn.
template <typename Ours, typename Theirs>
std::optional<Comparison> Compare(int usual, Ours measure_ours, Theirs measure_theirs) {
  Comparison comparison;
  for (int repeat = Repeats(usual); repeat > 0; --repeat) {
    std::optional<double> ours, theirs;
    if (repeat % 2 == 0) ours = measure_ours();
    theirs = measure_theirs();
    if (repeat % 2 != 0) ours = measure_ours();
    if (!ours || !theirs) return std::nullopt;
    comparison.ours.Add(*ours);
    comparison.theirs.Add(*theirs);
    comparison.ratio.Add(*ours / *theirs);
  }
  return comparison;
}

inline void PrintHead() {
  std::printf("| %-64s | %10s | %-18s | %7s | %7s | %4s | %-7s |\n", "What", "Median", "Half lie in",
              "Repeats", "Budget", "Used", "Verdict");
  std::printf("| %s | %s: | %s | %s: | %s: | %s: | %s |\n", std::string(64, '-').c_str(),
              std::string(9, '-').c_str(), std::string(18, '-').c_str(), std::string(6, '-').c_str(),
              std::string(6, '-').c_str(), std::string(3, '-').c_str(), std::string(7, '-').c_str());
}

// An empty unit is that of a ratio. A figure without a budget is there to explain another.
inline void PrintRow(const char* what, const char* unit, const Sample& sample,
                     std::optional<double> budget = std::nullopt) {
  char median[32], spread[64], limit[32] = "", used[32] = "";
  std::snprintf(median, sizeof median, "%.2f%s%s", sample.Median(), *unit ? " " : "", unit);
  std::snprintf(spread, sizeof spread, "%.2f to %.2f", sample.Quantile(0.25), sample.Quantile(0.75));
  if (budget) std::snprintf(limit, sizeof limit, "%.2f", *budget);
  if (budget && *budget > 0) std::snprintf(used, sizeof used, "%.2f", sample.Median() / *budget);
  const char* const verdict = !budget ? "" : sample.Median() <= *budget ? "within" : "over";
  std::printf("| %-64s | %10s | %-18s | %7d | %7s | %4s | %-7s |\n", what, median, spread,
              static_cast<int>(sample.Repeats()), limit, used, verdict);
  std::fflush(stdout);
}

}  // namespace benchmarks

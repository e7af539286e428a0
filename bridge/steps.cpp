#include "bridge/steps.h"

#include <algorithm>
#include <iterator>

#include "bridge/batch_plan.h"

namespace vek::bridge {
namespace {

using std::chrono::milliseconds;
using Outcome = StepResult::Outcome;

// Clients that give up after a minute of silence hear of a long wait well before.
constexpr milliseconds kProgressInterval{5000};

// Of the steps under way half count as done after this time.
constexpr double kHalfTime = 30'000;  // ms

class Run {
 public:
  Run(std::span<const Step> steps, bool stop_on_failure, Creo& creo, const Follower& follower)
      : steps_(steps), stop_on_failure_(stop_on_failure), creo_(creo), follower_(follower) {}

  std::vector<StepResult> Results() {
    while (results_.size() < steps_.size() && follower_.wanted() && !stopped_) TakeNext();
    results_.resize(steps_.size());
    for (StepResult& result : results_)
      if (result.outcome == Outcome::kNotRun) result.message = "Not run: a step before it failed.";
    return std::move(results_);
  }

 private:
  void TakeNext() {
    const auto left = steps_.subspan(results_.size());
    if (IsTooLarge(left.front())) {
      Add({Outcome::kFailed,
           "The arguments are larger than the " + std::to_string(kRequestLimit) +
               " bytes that the add-in reads.",
           nullptr});
    } else {
      Post(left.first(stop_on_failure_ ? 1 : NextBatch(left)));
    }
    if (!stopped_ && results_.size() < steps_.size())
      follower_.progress(static_cast<double>(results_.size()), Count(results_.size()) + " steps are done.");
  }

  void Post(std::span<const Step> batch) {
    auto answer =
        creo_.Post(batch, [this, &batch](milliseconds waited) { return KeepWaiting(batch, waited); });
    if (!answer.failure.empty()) {
      const std::string first = std::to_string(results_.size() + 1);
      answer.results.assign(batch.size(), {Outcome::kFailed, "No result: see step " + first + ".", nullptr});
      answer.results.front().message = answer.failure;
      stopped_ = true;
    }
    for (StepResult& result : answer.results) Add(std::move(result));
    last_told_ = milliseconds(0);
  }

  void Add(StepResult result) {
    stopped_ = stopped_ || (stop_on_failure_ && result.outcome == Outcome::kFailed);
    results_.push_back(std::move(result));
  }

  bool KeepWaiting(std::span<const Step> batch, milliseconds waited) {
    if (waited - last_told_ >= kProgressInterval) {
      last_told_ = waited;
      const auto time = static_cast<double>(waited.count());
      const double share = time / (time + kHalfTime);
      follower_.progress(static_cast<double>(results_.size()) + share * static_cast<double>(batch.size()),
                         "Creo has been at " + batch.front().operation + " for " +
                             std::to_string(waited.count() / 1000) + " s.");
    }
    return follower_.wanted();
  }

  std::string Count(std::size_t done) const {
    return std::to_string(done) + " of " + std::to_string(steps_.size());
  }

  const std::span<const Step> steps_;
  const bool stop_on_failure_;
  Creo& creo_;
  const Follower& follower_;
  std::vector<StepResult> results_;
  bool stopped_ = false;
  milliseconds last_told_{0};
};

}  // namespace

std::vector<StepResult> RunSteps(std::span<const Step> steps, bool stop_on_failure, Creo& creo,
                                 const Follower& follower) {
  return Run(steps, stop_on_failure, creo, follower).Results();
}

}  // namespace vek::bridge

// The bridge under a hostile schedule: batches against time-outs, shutdowns and replaced providers.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "addin/server/main_thread_bridge.h"
#include "tests/core/hostile_schedule.h"
#include "tests/core/running_server.h"
#include "tests/support/captured_log.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using support::Drawn;
using support::HostileSchedule;
using support::MeetingPoint;

constexpr const wchar_t* kTimedOut = L"Timed out waiting for MCP batch execution on the Creo main thread.";
constexpr int kBatchesEach = 8;
constexpr int kNeverGivenUp = std::numeric_limits<int>::max();

struct Counts {
  int answered = 0, timed_out = 0, refused = 0;

  void operator+=(const Counts& more) {
    answered += more.answered;
    timed_out += more.timed_out;
    refused += more.refused;
  }
};

// Some server threads submit numbered batches to a main thread that pumps and does what the host can make it
// do in between. What only the main thread may touch is plain, so that the sanitiser sees who else does.
class Round {
 public:
  Round(int submitters, std::chrono::milliseconds wait, bool shuts_down)
      : bridge_(wait), shuts_down_(shuts_down), counts_(static_cast<std::size_t>(submitters)) {
    const auto batches = static_cast<std::size_t>(submitters * kBatchesEach);
    runs_.resize(batches);
    pump_of_.resize(batches);
    given_up_at_.resize(batches, kNeverGivenUp);
    for (const int who : {0, 1}) {
      for (const wchar_t* const name : {L"first", L"last"})
        providers_[who].RegisterOperation(name, [this, who](const std::wstring& number) {
          MeetingPoint();
          EXPECT_EQ(who, running_) << "a batch ends with the provider that it began with";
          return MakeSuccessResult(std::to_wstring(who), number);
        });
      // Between the two: the host's user has done something.
      providers_[who].RegisterOperation(L"happen", [this, who](const std::wstring& number) {
        const auto batch = static_cast<std::size_t>(std::stoi(number));
        ++runs_[batch];
        pump_of_[batch] = pumps_.load(std::memory_order_relaxed);
        order_.push_back(std::stoi(number));
        if (Drawn(4) == 0) Publish(1 - who);
        if (shuts_down_ && Drawn(8) == 0) Shutdown();
        return MakeSuccessResult(std::to_wstring(who), number);
      });
    }
  }

  void Run() {
    Publish(0);
    std::vector<std::thread> servers;
    std::atomic<int> left{static_cast<int>(counts_.size())};
    for (std::size_t i = 0; i < counts_.size(); ++i)
      servers.emplace_back([this, i, &left] {
        for (int batch = 0; batch < kBatchesEach; ++batch)
          Submit(static_cast<int>(i) * kBatchesEach + batch, counts_[i]);
        --left;
      });
    while (left > 0) {
      const unsigned drawn = Drawn(16);
      if (drawn == 0) Publish(static_cast<int>(Drawn(2)));
      if (drawn == 1 && shuts_down_) Shutdown();
      if (drawn == 2 && published_ < 0) Publish(0);
      Pump();
      MeetingPoint();
    }
    for (std::thread& server : servers) server.join();

    Shutdown();
    BatchResults results;
    std::wstring error;
    EXPECT_FALSE(bridge_.Submit({{L"happen", L"0"}}, results, error));
    EXPECT_EQ(error, CreoMcpMainThread::kNotInitialised);
    Pump();
    for (std::size_t i = 0; i < runs_.size(); ++i)
      if (runs_[i] > 0) EXPECT_LE(pump_of_[i], given_up_at_[i]) << "a batch began after it was given up";
    EXPECT_LE(*std::max_element(runs_.begin(), runs_.end()), 1) << "no batch runs twice";
    if (counts_.size() == 1)
      EXPECT_TRUE(std::is_sorted(order_.begin(), order_.end())) << "no batch runs behind a later one";
  }

  Counts Total() const {
    Counts total;
    for (const Counts& counts : counts_) total += counts;
    return total;
  }

 private:
  // On a server thread: one batch, which gets one answer.
  void Submit(int number, Counts& counts) {
    if (const CreoMcpProvider* const provider = bridge_.Provider())
      EXPECT_EQ(provider->ListOperations().size(), 3u);
    const std::wstring text = std::to_wstring(number);
    BatchResults results;
    std::wstring error;
    if (bridge_.Submit({{L"first", text}, {L"happen", text}, {L"last", text}}, results, error)) {
      ++counts.answered;
      EXPECT_EQ(error, L"");
      EXPECT_EQ(results.size(), 3u);
      for (const auto& [name, result] : results) {
        EXPECT_EQ(result.dataJson, text) << "the results of another batch";
        EXPECT_EQ(result.message, results[L"first"].message);
      }
      EXPECT_EQ(runs_[static_cast<std::size_t>(number)], 1);
      return;
    }
    given_up_at_[static_cast<std::size_t>(number)] = pumps_.load(std::memory_order_relaxed);
    EXPECT_TRUE(results.empty());
    ++(error == kTimedOut ? counts.timed_out : counts.refused);
    if (error != kTimedOut) EXPECT_EQ(error, CreoMcpMainThread::kNotInitialised);
  }

  // The rest is the main thread's.
  void Publish(int who) {
    bridge_.Publish(&providers_[who]);
    published_ = who;
  }
  void Shutdown() {
    bridge_.Shutdown();
    published_ = -1;
  }
  void Pump() {
    running_ = published_;
    pumps_.fetch_add(1, std::memory_order_relaxed);
    bridge_.Pump();
    running_ = -1;
  }

  CreoMcpProvider providers_[2];
  CreoMcpMainThread bridge_;
  const bool shuts_down_;
  std::vector<Counts> counts_;
  // Counts without ordering anything, or it would hide races from the sanitiser.
  std::atomic<int> pumps_{0};
  std::vector<int> runs_;         // of each batch
  std::vector<int> pump_of_;      // in which it ran
  std::vector<int> given_up_at_;  // the last pump that had begun when its submitter was told so
  std::vector<int> order_;        // in which they ran
  int published_ = -1;
  int running_ = -1;
};

Counts RunRounds(int rounds, int submitters, std::chrono::milliseconds longest_wait, bool shuts_down) {
  Counts total;
  const int made = support::ScheduledRounds(rounds);
  for (int i = 0; i < made && !testing::Test::HasFailure(); ++i) {
    support::ClearCapturedLog();
    const HostileSchedule schedule(i);
    SCOPED_TRACE(schedule.Name());
    const bool patient = longest_wait == support::kPatience;
    Round round(submitters,
                patient ? longest_wait : std::chrono::milliseconds(Drawn(longest_wait.count() + 1)),
                shuts_down);
    round.Run();
    const Counts counts = round.Total();
    EXPECT_EQ(counts.answered + counts.timed_out + counts.refused, submitters * kBatchesEach);
    total += counts;
  }
  std::printf("%d rounds, of their batches %d answered, %d timed out, %d refused\n", made, total.answered,
              total.timed_out, total.refused);
  return total;
}

TEST(BridgeSchedule, LosesNoWakeUp) {
  const Counts counts = RunRounds(400, 1, support::kPatience, false);
  EXPECT_EQ(counts.timed_out + counts.refused, 0);
}

TEST(BridgeSchedule, AnswersEachBatchOnceWhenWaitsEndWhileBatchesRun) {
  const Counts counts = RunRounds(400, 1, 1ms, false);
  EXPECT_GT(counts.answered, 0);
  EXPECT_GT(counts.timed_out, 0);
  EXPECT_EQ(counts.refused, 0);
}

TEST(BridgeSchedule, RunsNothingBehindAShutdown) {
  const Counts counts = RunRounds(400, 1, 2ms, true);
  EXPECT_GT(counts.answered, 0);
  EXPECT_GT(counts.timed_out, 0);
  EXPECT_GT(counts.refused, 0);
}

TEST(BridgeSchedule, MixesNothingUpWhenSeveralSubmitAtOnce) {
  const Counts counts = RunRounds(300, 3, 2ms, true);
  EXPECT_GT(counts.answered, 0);
  EXPECT_GT(counts.timed_out, 0);
}

}  // namespace
}  // namespace vek

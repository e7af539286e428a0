#include "addin/server/main_thread_bridge.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <stdexcept>
#include <thread>

#include "tests/core/running_server.h"
#include "tests/support/captured_log.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using support::Eventually;
using support::kPatience;
using support::Pumping;

constexpr const wchar_t* kTimedOut = L"Timed out waiting for MCP batch execution on the Creo main thread.";

class Bridge : public testing::Test {
 protected:
  Bridge() {
    provider_.RegisterOperation(L"count", [this](const std::wstring&) {
      ++counted_;
      return MakeSuccessResult(L"counted");
    });
    provider_.RegisterOperation(L"hold", [this](const std::wstring&) {
      holding_ = true;
      while (!let_go_) std::this_thread::sleep_for(1ms);
      return MakeSuccessResult(L"held");
    });
  }

  CreoMcpProvider provider_;
  std::atomic<int> counted_{0};
  std::atomic<bool> holding_{false};
  std::atomic<bool> let_go_{false};
  BatchResults results_;
  std::wstring error_;
};

TEST_F(Bridge, ReportsWhatThrowsAroundABatchAndTakesTheNext) {
  const std::pair<std::function<void()>, const wchar_t*> cases[] = {
      {[] { throw std::runtime_error("no memory"); }, L"MCP batch execution failed: no memory"},
      {[] { throw 5; }, L"MCP batch execution failed with an unknown exception."},
  };
  CreoMcpMainThread bridge(kPatience);
  bridge.Publish(&provider_);
  for (const auto& [failure, error] : cases) {
    // The first line of a batch is its own, outside of every dispatch.
    support::FailNextLine(failure);
    {
      const Pumping pumping(bridge);
      EXPECT_FALSE(bridge.Submit({{L"count", L"{}"}}, results_, error_));
    }
    EXPECT_EQ(error_, error);
    const Pumping pumping(bridge);
    EXPECT_TRUE(bridge.Submit({{L"count", L"{}"}}, results_, error_));
  }
  EXPECT_EQ(counted_, 2);
}

TEST_F(Bridge, FinishesABatchThatOutlastsTheWaitAndTakesTheNext) {
  CreoMcpMainThread bridge(500ms);
  bridge.Publish(&provider_);
  Pumping pumping(bridge);
  EXPECT_FALSE(bridge.Submit({{L"hold", L""}, {L"count", L""}}, results_, error_));
  EXPECT_EQ(error_, kTimedOut);
  EXPECT_TRUE(results_.empty());
  EXPECT_TRUE(holding_);
  EXPECT_EQ(counted_, 0);

  let_go_ = true;
  EXPECT_TRUE(Eventually([&] { return counted_ == 1; }));
  EXPECT_TRUE(bridge.Submit({{L"count", L""}}, results_, error_));
  EXPECT_EQ(counted_, 2);
}

TEST_F(Bridge, DropsAWaitingBatchAtShutdown) {
  CreoMcpMainThread bridge(300ms);
  bridge.Publish(&provider_);
  std::thread server([&] { EXPECT_FALSE(bridge.Submit({{L"count", L""}}, results_, error_)); });
  std::this_thread::sleep_for(100ms);
  bridge.Shutdown();
  EXPECT_EQ(bridge.Provider(), nullptr);
  bridge.Publish(&provider_);
  bridge.Pump();
  server.join();
  EXPECT_EQ(counted_, 0);
}

}  // namespace
}  // namespace vek

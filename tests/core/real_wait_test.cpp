// The wait of the product as it is: this one takes its two minutes.
#include <gtest/gtest.h>

#include "tests/core/running_server.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using support::Post;
using support::Pumping;
using support::RunningServer;
using support::StatusOf;

TEST(RealWait, EndsAfterTwoMinutesAndTheBatchNeverRuns) {
  std::atomic<int> ran{0};
  RunningServer running(CreoMcpMainThread::kBatchWait);
  running.provider.RegisterOperation(L"count", [&ran](const std::wstring&) {
    ++ran;
    return MakeSuccessResult();
  });
  running.Start();
  const std::string request = Post("/execute", R"({"operations":{"count":{}}})");

  const auto start = std::chrono::steady_clock::now();
  support::RawConnection client(running.port());
  client.Send(request);
  EXPECT_FALSE(client.HasAnswer(119s));
  EXPECT_EQ(StatusOf(client.ReadToEnd(10s)), 504);
  EXPECT_GE(std::chrono::steady_clock::now() - start, 120s);

  Pumping pumping(running.bridge);
  std::this_thread::sleep_for(200ms);
  EXPECT_EQ(ran, 0);
  EXPECT_EQ(StatusOf(running.Exchange(request)), 200);
  EXPECT_EQ(ran, 1);
}

}  // namespace
}  // namespace vek

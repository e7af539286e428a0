#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "bench/host/host.h"
#include "tests/shell/lifecycle_fixture.h"
#include "tests/support/raw_connection.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using bench::TheHost;
using support::RawConnection;
using Names = std::vector<std::string>;

const std::string kArm = "ProUIDialogTimerStart";

class Tick : public Lifecycle {
 protected:
  void SetUp() override {
    Lifecycle::SetUp();
    Start();
  }

  // What one tick calls.
  static Names CallsOfOneTick() {
    const auto mark = TheHost().journal.Mark();
    TheHost().ui.RunTimersOnce();
    return NamesSince(mark);
  }

  static void Post(RawConnection& client, const std::string& body) {
    ASSERT_TRUE(client.Send("POST /execute HTTP/1.1\r\nContent-Length: " + std::to_string(body.size()) +
                            "\r\n\r\n" + body));
  }
};

TEST_F(Tick, WithNothingToDoOnlyArmsTheTimerAgain) {
  for (int i = 0; i < 3; ++i) EXPECT_EQ(CallsOfOneTick(), Names{kArm});
}

TEST_F(Tick, ArmsTheTimerOnlyBehindTheWork) {
  RawConnection client(4001);
  Post(client, R"({"operations":{"api_document_info":{}}})");
  Names busy;
  for (int i = 0; i < 500 && busy.empty(); ++i) {
    const Names calls = CallsOfOneTick();
    if (calls.size() > 1)
      busy = calls;
    else
      std::this_thread::sleep_for(5ms);
  }
  ASSERT_FALSE(busy.empty()) << "no tick has run the operation";
  EXPECT_EQ(busy.back(), kArm);
  EXPECT_EQ(std::count(busy.begin(), busy.end(), kArm), 1);
  EXPECT_TRUE(client.ReadToEnd().starts_with("HTTP/1.1 200 OK\r\n"));
}

TEST_F(Tick, RunsABatchThatWaitsAndOnlyThen) {
  RawConnection client(4001);
  Post(client, R"({"operations":{"api_none_such":{"a":1},"api_neither":{}}})");
  EXPECT_FALSE(client.HasAnswer(400ms)) << "nothing runs operations but the tick";
  TheHost().ui.RunTimersOnce();
  const std::string answer = client.ReadToEnd();
  EXPECT_TRUE(answer.starts_with("HTTP/1.1 200 OK\r\n"));
  for (const std::string name : {"api_none_such", "api_neither"})
    EXPECT_NE(answer.find("Operation '" + name + "' is not implemented by this provider."),
              std::string::npos);
}

}  // namespace
}  // namespace vek

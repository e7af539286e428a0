// Requests and their answers where the wire of the bench shows too little of them.
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/core/running_server.h"
#include "tests/support/captured_log.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using support::BodyOf;
using support::Post;
using support::Pumping;
using support::RunningServer;
using support::StatusOf;

constexpr const char* kJson = "Content-Type: application/json; charset=utf-8\r\n";

void ExpectError(const std::string& answer, int status, const std::string& error) {
  EXPECT_EQ(StatusOf(answer), status);
  EXPECT_EQ(BodyOf(answer), R"({"error":")" + error + R"("})");
  EXPECT_NE(answer.find(kJson), std::string::npos);
}

TEST(ServerRoutes, RefuseEverythingButOptionsWithoutAProvider) {
  RunningServer running;
  ASSERT_TRUE(running.server.Start());
  ExpectError(running.Exchange("GET /health HTTP/1.1\r\n\r\n"), 503, "MCP provider not initialised.");
  ExpectError(running.Exchange(Post("/execute", "")), 503, "MCP provider not initialised.");
}

TEST(ServerRoutes, RunABatchAndReportItByName) {
  RunningServer running;
  running.Start();
  Pumping pumping(running.bridge);
  const std::string answer =
      running.Exchange(Post("/Execute/", R"({"x":{"operations":{"other":{},"echo":{"a":"}"}}}})"));
  EXPECT_EQ(StatusOf(answer), 200);
  EXPECT_NE(answer.find(kJson), std::string::npos);
  EXPECT_EQ(BodyOf(answer),
            R"({"results":{"echo":{"success":true,"message":"echo","data":{"a":"}"}},)"
            R"("other":{"success":false,"message":"Operation 'other' is not implemented by this provider.",)"
            R"("data":null}}})");
}

TEST(ServerRoutes, ReportABatchThatBrokeDown) {
  RunningServer running;
  running.provider.RegisterOperation(L"exhaust", [](const std::wstring&) {
    support::FailNextLine([] { throw std::runtime_error("no memory"); });
    return MakeSuccessResult();
  });
  running.Start();
  Pumping pumping(running.bridge);
  ExpectError(running.Exchange(Post("/execute", R"({"operations":{"exhaust":{}}})")), 500,
              "MCP batch execution failed: no memory");
}

TEST(ServerRoutes, TimeABatchOutThatNobodyRunsAndTakeTheNext) {
  RunningServer running(300ms);
  running.Start();
  const std::string request = Post("/execute", R"({"operations":{"echo":{}}})");
  ExpectError(running.Exchange(request), 504,
              "Timed out waiting for MCP batch execution on the Creo main thread.");
  Pumping pumping(running.bridge);
  EXPECT_EQ(StatusOf(running.Exchange(request)), 200);
}

using support::kPatience;
using support::RawConnection;

constexpr std::size_t kMostOfARequest = 262'143;

class ServerRequests : public testing::Test {
 protected:
  RunningServer running_;
};

TEST_F(ServerRequests, AreReadAsUtf8OrElseInTheirCodePage) {
  running_.server.SetRequestHandler([](HttpServerResponse& response, const HttpServerRequest& request) {
    response.body = request.method + L"|" + request.path + L"|" + request.body;
  });
  running_.Start();
  EXPECT_EQ(BodyOf(running_.Exchange(Post("/a?b", "n\xC3\xBCsse"))), "POST|/a?b|n\xC3\xBCsse");
  EXPECT_EQ(BodyOf(running_.Exchange(Post("/a", "n\xFCsse"))), "POST|/a|n\xC3\xBCsse");
}

TEST_F(ServerRequests, AreTakenUpToTheLimitAndCutBehindIt) {
  running_.server.SetRequestHandler([](HttpServerResponse& response, const HttpServerRequest& request) {
    response.body = std::to_wstring(request.body.size());
  });
  running_.Start();
  for (const std::size_t size : {kMostOfARequest, std::size_t{300'000}}) {
    // Both lengths have six digits, as this one has.
    const std::string head = "POST /a HTTP/1.1\r\nContent-Length: 200000\r\n\r\n";
    const std::size_t body = size - head.size();
    const std::string request =
        "POST /a HTTP/1.1\r\nContent-Length: " + std::to_string(body) + "\r\n\r\n" + std::string(body, 'x');
    ASSERT_EQ(request.size(), size);
    const std::string answer = running_.Exchange(request);
    EXPECT_EQ(StatusOf(answer), 200);
    EXPECT_EQ(BodyOf(answer), std::to_string(kMostOfARequest - head.size()));
  }
}

TEST_F(ServerRequests, GetAsMuchOfALargeAnswerAsOneSendTakes) {
  constexpr std::size_t kLarge = 24u << 20;
  running_.server.SetRequestHandler(
      [](HttpServerResponse& response, const HttpServerRequest&) { response.body.assign(kLarge, L'x'); });
  running_.Start();
  RawConnection client(running_.port());
  client.Send("GET /a HTTP/1.1\r\n\r\n");
  ASSERT_TRUE(client.HasAnswer(kPatience));
  const std::string answer = client.ReadToEnd();
  EXPECT_EQ(StatusOf(answer), 200);
  EXPECT_GT(BodyOf(answer).size(), 1000u);
  EXPECT_LT(BodyOf(answer).size(), kLarge);
}

}  // namespace
}  // namespace vek

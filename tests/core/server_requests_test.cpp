// Requests and their answers where the wire of the bench shows too little of them.
#include <gtest/gtest.h>

#include <stdexcept>

#include "addin/server/http_message.h"
#include "tests/core/running_server.h"
#include "tests/support/captured_log.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using support::kPatience;
using support::ParseAnswer;
using support::Pumping;
using support::RawConnection;
using support::RequestText;
using support::RunningServer;

constexpr const char* kJson = "Content-Type: application/json; charset=utf-8\r\n";

void ExpectError(const std::string& answer, int status, const std::string& error) {
  EXPECT_EQ(ParseAnswer(answer).status, status);
  EXPECT_EQ(ParseAnswer(answer).body, R"({"error":")" + error + R"("})");
  EXPECT_NE(answer.find(kJson), std::string::npos);
}

TEST(ServerRoutes, RefuseEverythingButOptionsWithoutAProvider) {
  RunningServer running;
  ASSERT_TRUE(running.server.Start());
  ExpectError(running.Exchange("GET /health HTTP/1.1\r\n\r\n"), 503, "MCP provider not initialised.");
  ExpectError(running.Exchange(RequestText("POST", "/execute", "")), 503, "MCP provider not initialised.");
}

TEST(ServerRoutes, ReportABatchThatBrokeDown) {
  RunningServer running;
  running.provider.RegisterOperation(L"exhaust", [](const std::wstring&) {
    support::FailNextLine([] { throw std::runtime_error("no memory"); });
    return MakeSuccessResult();
  });
  running.Start();
  Pumping pumping(running.bridge);
  ExpectError(running.Exchange(RequestText("POST", "/execute", R"({"operations":{"exhaust":{}}})")), 500,
              "MCP batch execution failed: no memory");
}

TEST(ServerRoutes, TimeABatchOutThatNobodyRunsAndTakeTheNext) {
  RunningServer running(300ms);
  running.Start();
  const std::string request = RequestText("POST", "/execute", R"({"operations":{"echo":{}}})");
  ExpectError(running.Exchange(request), 504,
              "Timed out waiting for MCP batch execution on the Creo main thread.");
  Pumping pumping(running.bridge);
  EXPECT_EQ(ParseAnswer(running.Exchange(request)).status, 200);
}

class ServerRequests : public testing::Test {
 protected:
  RunningServer running_;
};

TEST_F(ServerRequests, AreReadAsUtf8OrElseInTheirCodePage) {
  running_.server.SetRequestHandler([](HttpServerResponse& response, const HttpServerRequest& request) {
    response.body = request.method + L"|" + request.path + L"|" + request.body;
  });
  running_.Start();
  EXPECT_EQ(ParseAnswer(running_.Exchange(RequestText("POST", "/a?b", "n\xC3\xBCsse"))).body,
            "POST|/a?b|n\xC3\xBCsse");
  EXPECT_EQ(ParseAnswer(running_.Exchange(RequestText("POST", "/a", "n\xFCsse"))).body,
            "POST|/a|n\xC3\xBCsse");
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
  EXPECT_EQ(ParseAnswer(answer).status, 200);
  EXPECT_GT(ParseAnswer(answer).body.size(), 1000u);
  EXPECT_LT(ParseAnswer(answer).body.size(), kLarge);
}

TEST(HttpMessage, KnowsWhenARequestIsWhole) {
  const std::pair<const wchar_t*, bool> cases[] = {
      {L"POST / HTTP/1.1\r\nContent-Length: 3\r\n\r\nabcd", true},
      {L"POST / HTTP/1.1\r\ncontent-length:\t3 \r\n\r\nab", false},
      {L"POST / HTTP/1.1\r\nContent-Length: -5\r\n\r\n", true},
      // The usual form of the name wins, wherever it stands.
      {L"POST / HTTP/1.1\r\ncontent-length: 9\r\nContent-Length: 1\r\n\r\na", true},
      {L"POST / HTTP/1.1\r\n\r\nContent-Length: 99", false},
  };
  for (const auto& [text, complete] : cases) EXPECT_EQ(IsCompleteRequest(text), complete) << text;
}

TEST(HttpMessage, CutsARequestIntoMethodPathAndBody) {
  const struct {
    const wchar_t *text, *method, *path, *body;
  } cases[] = {
      {L"POST /execute HTTP/1.1\r\nA: b\r\n\r\n{\r\n\r\n}", L"POST", L"/execute", L"{\r\n\r\n}"},
      {L" /a b\r\n\r\n", L"", L"/a", L""},
      {L"GET /a b c\r\n", L"GET", L"/a", L""},
      {L"GET /a HTTP/1.1\nA: b\n\nbody", L"GET", L"/a", L""},
  };
  for (const auto& [text, method, path, body] : cases) {
    HttpServerRequest request;
    EXPECT_TRUE(ParseRequest(text, request)) << text;
    EXPECT_EQ(request.method, method) << text;
    EXPECT_EQ(request.path, path) << text;
    EXPECT_EQ(request.body, body) << text;
    EXPECT_TRUE(request.headers.empty());
  }
}

TEST(HttpMessage, NormalisesPaths) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"/a/b/?c/", L"/a/b"},
      {L"?x", L"/"},
      {L"", L"/"},
      {L"\t/a\r", L"/a"},
  };
  for (const auto& [path, normal] : cases) EXPECT_EQ(NormalisePath(path), normal) << path;
}

TEST(HttpMessage, NamesTheStatusCodes) {
  std::wstring phrases;
  for (const int code : {200, 204, 400, 404, 500, 503, 504, 201})
    phrases += ReasonPhrase(code) + std::wstring(L"|");
  EXPECT_EQ(phrases,
            L"OK|No Content|Bad Request|Not Found|Internal Server Error|Service Unavailable|"
            L"Gateway Timeout|Unknown|");
}

// The wait of the product as it is: this one takes its two minutes.
TEST(RealWait, EndsAfterTwoMinutesAndTheBatchNeverRuns) {
  std::atomic<int> ran{0};
  RunningServer running(CreoMcpMainThread::kBatchWait);
  running.provider.RegisterOperation(L"count", [&ran](const std::wstring&) {
    ++ran;
    return MakeSuccessResult();
  });
  running.Start();
  const std::string request = RequestText("POST", "/execute", R"({"operations":{"count":{}}})");

  const auto start = std::chrono::steady_clock::now();
  RawConnection client(running.port());
  client.Send(request);
  EXPECT_FALSE(client.HasAnswer(119s));
  EXPECT_EQ(ParseAnswer(client.ReadToEnd(10s)).status, 504);
  EXPECT_GE(std::chrono::steady_clock::now() - start, 120s);

  Pumping pumping(running.bridge);
  std::this_thread::sleep_for(200ms);
  EXPECT_EQ(ran, 0);
  EXPECT_EQ(ParseAnswer(running.Exchange(request)).status, 200);
  EXPECT_EQ(ran, 1);
}

}  // namespace
}  // namespace vek

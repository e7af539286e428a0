// What the endpoints answer, over real sockets.
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

TEST(ServerRoutes, AnswerHealthUnderAllItsNames) {
  RunningServer running;
  running.Start();
  for (const char* const line : {"GET /health", "POST /health/", "get /HEALTH?x=1"}) {
    const std::string answer = running.Exchange(std::string(line) + " HTTP/1.1\r\n\r\n");
    EXPECT_EQ(StatusOf(answer), 200) << line;
    EXPECT_EQ(BodyOf(answer),
              R"({"status":"ok","addinReachable":true,"provider":"creo","server":"VekAI.CreoAddin",)"
              R"("listenPort":0,"registeredOperations":["echo"]})")
        << line;
    EXPECT_NE(answer.find(kJson), std::string::npos) << line;
  }
}

TEST(ServerRoutes, AnswerOptionsForAnyPath) {
  RunningServer running;
  ASSERT_TRUE(running.server.Start());
  for (const char* const line : {"OPTIONS /anything", "options /execute", "OPTIONS *"}) {
    const std::string answer = running.Exchange(std::string(line) + " HTTP/1.1\r\n\r\n");
    EXPECT_EQ(answer,
              "HTTP/1.1 204 No Content\r\n"
              "Content-Type: text/plain\r\n"
              "Access-Control-Allow-Origin: *\r\n"
              "Access-Control-Allow-Methods: GET, POST, OPTIONS\r\n"
              "Access-Control-Allow-Headers: Content-Type\r\n"
              "Content-Length: 0\r\n"
              "Connection: close\r\n\r\n")
        << line;
  }
}

TEST(ServerRoutes, KnowNoOtherEndpoints) {
  RunningServer running;
  running.Start();
  const std::pair<const char*, const char*> cases[] = {{"GET /execute", "GET /execute"},
                                                       {"Put /Health/?x=1", "Put /Health"},
                                                       {"GET ", "GET /"},
                                                       {"DELETE /a\"b", "DELETE /a\\\"b"}};
  for (const auto& [line, named] : cases)
    ExpectError(running.Exchange(std::string(line) + " HTTP/1.1\r\n\r\n"), 404,
                std::string("Endpoint not found: ") + named);
}

TEST(ServerRoutes, RefuseEverythingButOptionsWithoutAProvider) {
  RunningServer running;
  ASSERT_TRUE(running.server.Start());
  ExpectError(running.Exchange("GET /health HTTP/1.1\r\n\r\n"), 503, "MCP provider not initialised.");
  ExpectError(running.Exchange(Post("/execute", "")), 503, "MCP provider not initialised.");
}

TEST(ServerRoutes, NameWhatIsWrongWithABatch) {
  RunningServer running;
  running.Start();
  const std::pair<const char*, const char*> cases[] = {
      {"", "Request body is empty."},
      {R"({"operations":{"api_a":)", "Request must include an 'operations' object."},
      {R"({"operations":{}})", "Request must include at least one entry in 'operations'."},
      {R"({"operations":{api_a:{}}})", "Malformed operations object."},
  };
  for (const auto& [body, error] : cases) ExpectError(running.Exchange(Post("/execute", body)), 400, error);
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

}  // namespace
}  // namespace vek

// What comes over the wire, byte by byte, against the running bench; and its console.

#include <algorithm>
#include <chrono>
#include <future>
#include <regex>
#include <thread>

#include "tests/endtoend/bench_test.h"

namespace vek::endtoend {
namespace {

using namespace std::chrono_literals;

class Wire : public BenchTest {
 protected:
  // Whatever a test did to its connection, the next request must work.
  void TearDown() override {
    EXPECT_EQ(Request("GET", "/health").status, 200);
    BenchTest::TearDown();
  }
};

// An execute request of exactly `size` bytes, head included; a number of six digits.
std::string RequestOfSize(std::size_t size) {
  const auto with_pad = [](std::size_t pad) {
    return RequestText("POST", "/execute",
                       R"({"operations":{"api_unknown":{"pad":")" + std::string(pad, 'x') + "\"}}}");
  };
  constexpr std::size_t kSome = 200'000;
  return with_pad(kSome + size - with_pad(kSome).size());
}

TEST_F(Wire, EveryResponseCarriesItsHeadersInTheirOrder) {
  const Answer answer = Request("OPTIONS", "/anything");
  EXPECT_EQ(answer.head,
            "HTTP/1.1 204 No Content\r\n"
            "Content-Type: text/plain\r\n"
            "Access-Control-Allow-Origin: *\r\n"
            "Access-Control-Allow-Methods: GET, POST, OPTIONS\r\n"
            "Access-Control-Allow-Headers: Content-Type\r\n"
            "Content-Length: 0\r\n"
            "Connection: close");
  EXPECT_EQ(answer.body, "");
}

TEST_F(Wire, HealthListsTheExpectedOperationsInAscendingOrder) {
  const std::string body = Request("GET", "/health").body;
  const std::regex pattern("\"(api_[a-z0-9_]+)\"");
  std::vector<std::string> names;
  for (std::sregex_iterator match(body.begin(), body.end(), pattern), end; match != end; ++match)
    names.push_back((*match)[1]);
  EXPECT_EQ(names.size(), 81u);
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
  EXPECT_EQ(names.front(), "api_analysis_bounding_box");
  EXPECT_EQ(names.back(), "api_sketch_text_native");
  EXPECT_EQ(
      body.substr(0, 103),
      R"({"status":"ok","addinReachable":true,"provider":"creo","server":"VekAI.CreoAddin","listenPort":4001,"re)");
}

TEST_F(Wire, RoutesByMethodAndNormalisedPath) {
  const struct {
    const char *method, *path;
    int status;
    const char* body_holds;
  } cases[] = {
      {"POST", "/health", 200, "\"status\":\"ok\""},
      {"GET", "/health/", 200, "\"status\":\"ok\""},
      {"get", "/HEALTH?x=1", 200, "\"status\":\"ok\""},
      {"GET", "/health///", 200, "\"status\":\"ok\""},
      {"PUT", "/health", 404, R"({"error":"Endpoint not found: PUT /health"})"},
      {"GET", "/execute", 404, R"({"error":"Endpoint not found: GET /execute"})"},
      {"GET", "/", 404, R"({"error":"Endpoint not found: GET /"})"},
      {"POST", "/", 400, "<html><body><h1>Error</h1><p>Request body is empty</p></body></html>"},
      {"POST", "/nowhere/?q", 404, R"({"error":"Endpoint not found: POST /nowhere"})"},
      {"options", "/x", 204, ""},
  };
  for (const auto& c : cases) {
    const Answer answer = Request(c.method, c.path);
    EXPECT_EQ(answer.status, c.status) << c.method << " " << c.path;
    EXPECT_NE(answer.body.find(c.body_holds), std::string::npos)
        << c.method << " " << c.path << ": " << answer.body;
  }
}

TEST_F(Wire, ARequestMayBeSplitAtAnyByte) {
  const std::string request = RequestText("POST", "/execute", R"({"operations":{"api_unknown":{}}})");
  for (std::size_t at = 1; at < request.size(); ++at) {
    support::RawConnection connection(kPort);
    connection.Send(request.substr(0, at));
    std::this_thread::sleep_for(2ms);
    connection.Send(request.substr(at));
    EXPECT_EQ(ParseAnswer(connection.ReadToEnd()).status, 200) << "split at byte " << at;
  }
}

TEST_F(Wire, AStalledClientIsAnsweredAfterTwoSecondsWithWhatArrived) {
  support::RawConnection connection(kPort);
  const auto begin = std::chrono::steady_clock::now();
  connection.Send(
      "POST /execute HTTP/1.1\r\nContent-Length: 500\r\n\r\n{\"operations\":{\"api_unknown\":{}}}");
  EXPECT_EQ(ParseAnswer(connection.ReadToEnd()).status, 200);
  EXPECT_GE(std::chrono::steady_clock::now() - begin, 1900ms);
}

TEST_F(Wire, ABodyWithNonAsciiTextWaitsForTheSilenceAndIsReadAsUtf8) {
  const auto begin = std::chrono::steady_clock::now();
  const Answer answer = Execute(
      "{\"api_gr\xC3\xB6\xC3\x9F"
      "e\":{}}");
  EXPECT_GE(std::chrono::steady_clock::now() - begin, 1900ms);
  EXPECT_EQ(answer.status, 200);
  EXPECT_NE(answer.body.find("Operation 'api_gr\xC3\xB6\xC3\x9F"
                             "e' is not implemented by this provider."),
            std::string::npos)
      << answer.body;
}

TEST_F(Wire, TheLargestRequestIsReadWholeAndALargerOneIsCutOff) {
  for (const std::size_t size : {262'143u, 300'000u}) {
    const std::string request = RequestOfSize(size);
    ASSERT_EQ(request.size(), size);
    support::RawConnection connection(kPort);
    connection.Send(request);
    const Answer answer = ParseAnswer(connection.ReadToEnd());
    EXPECT_EQ(answer.status, size == 262'143 ? 200 : 400) << answer.body;
  }
}

TEST_F(Wire, TheLengthHeaderIsKnownInTwoSpellings) {
  const std::string body = R"({"operations":{"api_unknown":{}}})";
  const struct {
    const char* header;
    int status;
  } cases[] = {{"Content-Length", 200}, {"content-length", 200}, {"CONTENT-LENGTH", 400}};
  for (const auto& c : cases) {
    support::RawConnection connection(kPort);
    connection.Send(std::string("POST /execute HTTP/1.1\r\n") + c.header + ": " +
                    std::to_string(body.size()) + "\r\n\r\n");
    std::this_thread::sleep_for(100ms);
    connection.Send(body);
    EXPECT_EQ(ParseAnswer(connection.ReadToEnd()).status, c.status) << c.header;
  }
}

TEST_F(Wire, ARequestLineWithOneBlankGetsNoAnswer) {
  support::RawConnection connection(kPort);
  connection.Send("GET /health\r\n\r\n");
  EXPECT_EQ(connection.ReadToEnd(), "");
}

TEST_F(Wire, AMalformedBatchIsAnsweredWithWhatIsWrong) {
  const struct {
    const char *body, *error;
  } cases[] = {
      {"", "Request body is empty."},
      {"{}", "Request must include an 'operations' object."},
      {R"({"operations":{}})", "Request must include at least one entry in 'operations'."},
      {R"({"operations":[]})", "Invalid operations object."},
      {R"({"operations":{5}})", "Malformed operations object."},
  };
  for (const auto& c : cases) {
    const Answer answer = Request("POST", "/execute", c.body);
    EXPECT_EQ(answer.status, 400) << c.body;
    EXPECT_EQ(answer.body, std::string(R"({"error":")") + c.error + "\"}");
  }
}

TEST_F(Wire, OfTwoClientsTheSecondIsServedBehindTheFirst) {
  support::RawConnection first(kPort);
  first.Send("POST /execute HTTP/1.1\r\nContent-Length: 33\r\n\r\n");
  std::this_thread::sleep_for(200ms);
  support::RawConnection second(kPort);
  second.Send(RequestText("GET", "/health", ""));
  EXPECT_FALSE(second.HasAnswer(500ms)) << "the second client was served while the first was being read";
  first.Send(R"({"operations":{"api_unknown":{}}})");
  EXPECT_EQ(ParseAnswer(first.ReadToEnd()).status, 200);
  EXPECT_EQ(ParseAnswer(second.ReadToEnd()).status, 200);
}

TEST_F(Wire, ABatchWaitsWhileTheTimersAreHeldBack) {
  Bench().Console("pause");
  auto answer = std::async(std::launch::async, [] { return Execute(R"({"api_document_list_open":{}})"); });
  EXPECT_EQ(answer.wait_for(1s), std::future_status::timeout);
  Bench().Console("resume");
  EXPECT_EQ(answer.get().status, 200);
}

class Console : public BenchTest {};

TEST_F(Console, HelpListsEachCommand) {
  const auto help = Bench().Console("help");
  for (const char* command : {"help", "models", "tree", "journal", "faces", "units", "fault", "delay",
                              "ledger", "pause", "resume", "quit"})
    EXPECT_TRUE(std::any_of(help.begin(), help.end(), [&](const std::string& line) {
      return line.starts_with(command);
    })) << command;
}

TEST_F(Console, ADelayLengthensTheCall) {
  Bench().Console("delay ProMdlCurrentGet 700");
  const auto begin = std::chrono::steady_clock::now();
  Execute(R"({"api_document_info":{}})");
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(700));
}

}  // namespace
}  // namespace vek::endtoend

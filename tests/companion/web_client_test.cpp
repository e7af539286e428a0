// Requests to the companion application, and what becomes of them.
#include "addin/companion/web_client.h"

#include <gtest/gtest.h>

#include "tests/companion/running_companion.h"
#include "tests/support/captured_log.h"

namespace vek {
namespace {

struct Outcome {
  bool sent = false;
  std::vector<HttpResponse> successes;
  std::vector<std::wstring> errors;
  std::wstring last_error;
};

Outcome Send(const std::wstring& path) {
  Outcome outcome;
  VekWebClient client;
  outcome.sent = client.SendReplacePart(
      path, [&](const HttpResponse& response) { outcome.successes.push_back(response); },
      [&](const std::wstring& error) { outcome.errors.push_back(error); });
  outcome.last_error = client.LastError();
  return outcome;
}

void ExpectError(const Outcome& outcome, const std::wstring& error) {
  EXPECT_FALSE(outcome.sent);
  EXPECT_TRUE(outcome.successes.empty());
  EXPECT_EQ(outcome.errors, std::vector<std::wstring>{error}) << "told once";
  EXPECT_EQ(outcome.last_error, error);
}

class WebClient : public testing::Test {
 protected:
  void SetUp() override { support::ClearCapturedLog(); }
};

TEST_F(WebClient, PostsOneLineOfJsonToItsEndpoint) {
  const support::RunningCompanion companion;
  EXPECT_TRUE(Send(LR"(C:\work\part.prt.1)").sent);
  EXPECT_TRUE(VekWebClient().SendInspectAssembly(L"C:\\work\\box.asm.2", {}, {}));
  EXPECT_TRUE(VekWebClient().SendFaceMeasurement({}, {}, {}));
  const auto received = companion.Received();
  ASSERT_EQ(received.size(), 3u);
  EXPECT_EQ(received[0], R"(/partReplacement {"filePath":"C:/work/part.prt.1"})");
  EXPECT_EQ(received[1], R"(/assemblyInspection {"filePath":"C:/work/box.asm.2"})");
  EXPECT_TRUE(received[2].starts_with(R"(/receive-data {"Area":"","Perimeter":"")")) << received[2];
  EXPECT_EQ(support::CountCaptured(
                LR"(VekWebClient: Sending replace part data: {"filePath":"C:/work/part.prt.1"})"),
            1);
  EXPECT_EQ(support::CountCaptured(
                L"VekWebClient: HTTP request successful. Status: 200, Endpoint: /partReplacement"),
            1);
}

TEST_F(WebClient, TakesTheStatusesFrom200To299ForSuccess) {
  const support::RunningCompanion companion("200 taken\n204\n299\n300\n404 not here\n500\n");
  const Outcome taken = Send(L"a");
  ASSERT_EQ(taken.successes.size(), 1u);
  EXPECT_EQ(taken.successes[0].statusCode, 200);
  EXPECT_EQ(taken.successes[0].body, L"taken");
  EXPECT_TRUE(taken.successes[0].success);
  EXPECT_TRUE(Send(L"b").sent);
  EXPECT_TRUE(Send(L"c").sent);
  ExpectError(Send(L"d"), L"HTTP request failed. Status: 300, Endpoint: /partReplacement");
  ExpectError(Send(L"e"),
              L"HTTP request failed. Status: 404, Endpoint: /partReplacement, Response: not here");
  ExpectError(Send(L"f"), L"HTTP request failed. Status: 500, Endpoint: /partReplacement");
}

TEST_F(WebClient, TellsOfAConnectionThatIsNotThereOrEndsOrStalls) {
  const std::wstring send = L"HTTP request exception: Failed to send HTTP request. Error: ";
  const std::wstring receive = L"HTTP request exception: Failed to receive HTTP response. Error: ";
  ExpectError(Send(L"nobody"), send);
  const support::RunningCompanion companion("close\nstall\n");
  ExpectError(Send(L"closed"), receive);
  ExpectError(Send(L"stalled"), receive);
}

TEST_F(WebClient, ReadsABodyInChunks) {
  const support::RunningCompanion companion("chunked in parts\n");
  const Outcome outcome = Send(L"a");
  ASSERT_EQ(outcome.successes.size(), 1u);
  EXPECT_EQ(outcome.successes[0].body, L"in parts");
}

}  // namespace
}  // namespace vek

// How requests arrive: in pieces, too large, incomplete, at the same time.
#include <gtest/gtest.h>

#include "tests/core/running_server.h"

namespace vek {
namespace {

using namespace std::chrono_literals;
using support::BodyOf;
using support::Eventually;
using support::kPatience;
using support::Post;
using support::RawConnection;
using support::RunningServer;
using support::StatusOf;

constexpr std::size_t kMostOfARequest = 262'143;

class ServerRequests : public testing::Test {
 protected:
  // A server that answers each request with its body and counts them.
  void Echo() {
    running_.server.SetRequestHandler([this](HttpServerResponse& response, const HttpServerRequest& request) {
      ++requests_;
      response.body = request.method + L"|" + request.path + L"|" + request.body;
    });
    running_.Start();
  }

  // Sends `part` and waits until the server has read it.
  void SendAndLetArrive(RawConnection& client, std::string_view part) {
    const std::size_t before = running_.sockets.Received();
    ASSERT_TRUE(client.Send(part));
    ASSERT_TRUE(Eventually([&] { return running_.sockets.Received() == before + part.size(); }));
  }

  RunningServer running_;
  std::atomic<int> requests_{0};
};

std::chrono::milliseconds Since(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

TEST_F(ServerRequests, ArriveWholeHoweverTheyAreSplit) {
  Echo();
  const std::string request = Post("/execute?a", "{\"operations\":{}}");
  for (std::size_t split = 1; split < request.size(); ++split) {
    RawConnection client(running_.port());
    SendAndLetArrive(client, request.substr(0, split));
    client.Send(request.substr(split));
    ASSERT_EQ(BodyOf(client.ReadToEnd(kPatience)), "POST|/execute?a|{\"operations\":{}}") << split;
  }
}

TEST_F(ServerRequests, AreReadAsUtf8AfterTheClientsSilenceOrElseInTheirCodePage) {
  Echo();
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(BodyOf(running_.Exchange(Post("/a", "n\xC3\xBCsse"))), "POST|/a|n\xC3\xBCsse");
  EXPECT_GE(Since(start), 1900ms);
  EXPECT_EQ(BodyOf(running_.Exchange(Post("/a", "n\xFCsse"))), "POST|/a|n\xC3\xBCsse");
}

TEST_F(ServerRequests, OfStalledClientsAreHandledAsFarAsTheyCame) {
  Echo();
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(BodyOf(running_.Exchange("POST /a HTTP/1.1\r\nContent-Length: 100\r\n\r\nhalf")), "POST|/a|half");
  EXPECT_GE(Since(start), 1900ms);
  EXPECT_EQ(running_.Exchange(""), "") << "what never came gets no answer";
  EXPECT_EQ(running_.Exchange("GET /health\r\n\r\n"), "") << "one blank in the line";
  EXPECT_EQ(requests_, 1);
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

TEST_F(ServerRequests, OfClientsThatLeaveDoNotDisturbTheNext) {
  Echo();
  for (const char* const part : {"GET /never", "POST /half HTTP/1.1\r\nContent-Length: 10\r\n\r\nhal"}) {
    RawConnection leaver(running_.port());
    SendAndLetArrive(leaver, part);
  }
  EXPECT_EQ(BodyOf(running_.Exchange("GET /next HTTP/1.1\r\n\r\n")), "GET|/next|");
  // The half request was handled, for nobody; the one without its second blank was not.
  EXPECT_EQ(requests_, 2);
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

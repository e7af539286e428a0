#include "tests/soak/hostile_clients.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <thread>

#include "tests/endtoend/bench_test.h"
#include "tests/support/raw_connection.h"

namespace vek::soak {
namespace {

using namespace std::chrono_literals;
using endtoend::kPort;
using endtoend::ParseAnswer;
using endtoend::RequestText;
using support::RawConnection;
using Honest = std::function<void()>;

constexpr std::chrono::seconds kPatience{60};
const std::string kBatch = R"({"operations":{"api_unknown":{}}})";
const std::string kExecute = RequestText("POST", "/execute", kBatch);
constexpr const char* kUnknown = "Operation 'api_unknown' is not implemented by this provider.";

std::size_t Below(Random& random, std::size_t limit) {
  return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
}

void ExpectAnswered(const std::string& bytes, int status, const std::string& part) {
  const endtoend::Answer answer = ParseAnswer(bytes);
  EXPECT_EQ(answer.status, status) << bytes;
  EXPECT_NE(answer.body.find(part), std::string::npos) << bytes;
}

// One comes to its end byte by byte; one falls silent in its body and stays; one leaves in its head.
void SlowLoris(Random&, const Honest& honest) {
  constexpr std::size_t kPieces = 8;
  const auto drip = [](RawConnection& client, const std::string& bytes) {
    for (std::size_t i = 0; i < kPieces; ++i) {
      const std::size_t begin = bytes.size() * i / kPieces, end = bytes.size() * (i + 1) / kPieces;
      client.Send(bytes.substr(begin, end - begin));
      std::this_thread::sleep_for(100ms);
    }
  };
  RawConnection patient(kPort), silent(kPort);
  std::thread first([&] { drip(patient, kExecute); });
  std::thread second([&] { drip(silent, kExecute.substr(0, kExecute.size() - 4)); });
  std::thread third([&] {
    RawConnection leaving(kPort);
    drip(leaving, kExecute.substr(0, 30));
  });
  honest();
  for (std::thread* thread : {&first, &second, &third}) thread->join();
  ExpectAnswered(patient.ReadToEnd(kPatience), 200, kUnknown);
  ExpectAnswered(silent.ReadToEnd(kPatience), 400, "Request must include an 'operations' object.");
}

// Clients that end their side behind a whole request, in the middle of one, and before it.
void HalfClosed(Random& random, const Honest& honest) {
  std::deque<RawConnection> whole, cut, empty;
  for (int i = 0; i < 5; ++i) {
    whole.emplace_back(kPort).Send(kExecute);
    whole.back().FinishSending();
    // Somewhere in the body, behind the head's blank line and the key.
    cut.emplace_back(kPort).Send(kExecute.substr(0, kExecute.size() - 1 - Below(random, 10)));
    cut.back().FinishSending();
    empty.emplace_back(kPort).FinishSending();
  }
  honest();
  for (RawConnection& client : whole) ExpectAnswered(client.ReadToEnd(kPatience), 200, kUnknown);
  for (RawConnection& client : cut) {
    // The outermost bracket alone may be missing.
    const endtoend::Answer answer = ParseAnswer(client.ReadToEnd(kPatience));
    EXPECT_TRUE(answer.status == 400 || answer.body.find(kUnknown) != std::string::npos) << answer.body;
  }
  for (RawConnection& client : empty) EXPECT_EQ(client.ReadToEnd(kPatience), "");
}

// Clients that are gone before their request is read, or before its batch has run.
void Reset(Random& random, const Honest& honest) {
  for (int i = 0; i < 20; ++i) {
    RawConnection client(kPort);
    client.EndWithReset();
    client.Send(i % 4 == 0 ? kExecute : kExecute.substr(0, Below(random, kExecute.size())));
    if (i % 2 == 0) std::this_thread::sleep_for(10ms);
  }
  honest();
}

void Garbage(Random& random, const Honest& honest) {
  std::deque<RawConnection> clients;
  for (int i = 0; i < 20; ++i) {
    std::string bytes(1 + Below(random, 5'000), '\0');
    for (char& byte : bytes) byte = static_cast<char>(Below(random, 256));
    if (i % 3 == 0) bytes = "POST /execute HTTP/1.1\r\n\r\n" + bytes;
    clients.emplace_back(kPort).Send(bytes);
    clients.back().FinishSending();
  }
  honest();
  for (std::size_t i = 0; i < clients.size(); ++i) {
    const endtoend::Answer answer = ParseAnswer(clients[i].ReadToEnd(kPatience));
    if (i % 3 == 0) {
      EXPECT_EQ(answer.body, R"({"error":"Request must include an 'operations' object."})");
    } else {
      EXPECT_TRUE(answer.status == 0 || answer.status == 404) << answer.head;
    }
  }
}

// More than is read of a request, and the client goes on to send.
void Oversized(Random&, const Honest& honest) {
  const std::string padded = R"({"operations":{"api_unknown":{"pad":")" + std::string(300'000, 'x') + "\"}}}";
  std::deque<RawConnection> clients;
  for (int i = 0; i < 3; ++i) clients.emplace_back(kPort).Send(RequestText("POST", "/execute", padded));
  std::thread flood([] {
    const std::string bytes(1 << 20, 'y');
    RawConnection client(kPort);
    for (int i = 0; i < 16 && client.Send(bytes); ++i) continue;
  });
  honest();
  flood.join();
  // What was not read when the server closed may take the answer with it.
  for (RawConnection& client : clients) {
    const std::string answer = client.ReadToEnd(kPatience);
    if (!answer.empty()) ExpectAnswered(answer, 400, "error");
  }
}

// Shorter than announced, the client waiting: it is answered for what came once it has been silent for two
// seconds.
void Truncated(Random&, const Honest& honest) {
  RawConnection client(kPort);
  client.Send("POST /execute HTTP/1.1\r\nContent-Length: 500\r\n\r\n" + kBatch);
  honest();
  ExpectAnswered(client.ReadToEnd(kPatience), 200, kUnknown);
}

// Many at once: most of them ask, and all of these are answered; the others leave without a word.
void Crowd(Random&, const Honest& honest) {
  std::deque<RawConnection> asking;
  std::deque<RawConnection> mute;
  for (int i = 0; i < 60; ++i) {
    asking.emplace_back(kPort).Send(RequestText("GET", "/health", ""));
    if (i % 3 == 0) mute.emplace_back(kPort);
  }
  mute.clear();
  honest();
  for (RawConnection& client : asking)
    ExpectAnswered(client.ReadToEnd(kPatience), 200, R"("addinReachable":true)");
}

// How long the honest request may wait behind so many clients that send less than a whole request.
constexpr std::chrono::milliseconds Behind(int incomplete) {
  constexpr std::chrono::seconds kBusyMachine{6};
  return 2s * incomplete + kBusyMachine;
}

constexpr Wave kWaves[] = {
    {"slow loris", SlowLoris, Behind(3)}, {"half-closed", HalfClosed, Behind(10)},
    {"reset", Reset, Behind(15)},         {"garbage", Garbage, Behind(13)},
    {"oversized", Oversized, Behind(1)},  {"truncated", Truncated, Behind(1)},
    {"crowd of 80", Crowd, Behind(20)},
};

}  // namespace

std::span<const Wave> Waves() {
  return kWaves;
}

}  // namespace vek::soak

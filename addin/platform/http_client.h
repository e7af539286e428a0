// One HTTP POST, through the system's client.
#pragma once

#include <string>

namespace vek {

struct HttpPost {
  std::wstring agent;
  std::wstring host;
  int port = 0;
  int timeout_ms = 0;  // of each phase: connecting, sending, receiving
  std::wstring path;
  std::wstring header;
  std::string body;
};

// Where an exchange ended: at the first call that failed, or at the answer.
enum class HttpPhase { kSession, kConnection, kRequest, kHeaders, kSending, kReceiving, kAnswered };

struct HttpAnswer {
  HttpPhase phase = HttpPhase::kSession;
  int status_code = 0;  // 0 for an answer that doesn't tell
  std::wstring body;    // decoded part by part as it comes; what is cut between two parts can be lost
};

// Blocks until the answer is there whole, or the exchange has failed.
HttpAnswer Post(const HttpPost& post);

}  // namespace vek

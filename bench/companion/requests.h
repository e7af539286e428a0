// HTTP requests to the companion, and answers to them.
#pragma once

#include <string>

#include "bench/companion/scripted_answers.h"

namespace bench::companion {

struct Request {
  std::string method;
  std::string path;
  std::string body;
};

// Cuts what has arrived into a request; false while some of it is still missing.
bool ReadRequest(const std::string& bytes, Request& request);

// The bytes to send; empty for an answer that sends none.
std::string ComposeAnswer(const Request& request, const ScriptedAnswer& answer);

}  // namespace bench::companion

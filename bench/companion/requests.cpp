#include "bench/companion/requests.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <sstream>

namespace bench::companion {
namespace {

constexpr const char* kBlankLine = "\r\n\r\n";

std::size_t ContentLength(std::string head) {
  std::ranges::transform(head, head.begin(), [](unsigned char c) { return std::tolower(c); });
  const std::string name = "content-length:";
  const auto at = head.find(name);
  return at == std::string::npos ? 0 : std::strtoul(head.c_str() + at + name.size(), nullptr, 10);
}

bool IsEndpoint(const Request& request) {
  static const std::string paths[] = {"/receive-data", "/partReplacement", "/assemblyInspection"};
  return request.method == "POST" && std::ranges::find(paths, request.path) != std::end(paths);
}

// One byte a chunk: no reader can take a character of several bytes in one piece.
std::string Chunks(const std::string& body) {
  std::string chunks;
  for (const char byte : body) chunks += std::string("1\r\n") + byte + "\r\n";
  return chunks + "0\r\n\r\n";
}

}  // namespace

bool ReadRequest(const std::string& bytes, Request& request) {
  const auto end_of_head = bytes.find(kBlankLine);
  if (end_of_head == std::string::npos) return false;
  const std::string head = bytes.substr(0, end_of_head);
  const std::string body = bytes.substr(end_of_head + 4);
  const std::size_t length = ContentLength(head);
  if (body.size() < length) return false;
  std::istringstream line(head);
  line >> request.method >> request.path;
  request.body = body.substr(0, length);
  return true;
}

std::string ComposeAnswer(const Request& request, const ScriptedAnswer& answer) {
  using Manner = ScriptedAnswer::Manner;
  if (answer.manner == Manner::kStall || answer.manner == Manner::kClose) return {};
  const int status = IsEndpoint(request) ? answer.status : 404;
  const std::string head = "HTTP/1.1 " + std::to_string(status) + " Answer\r\nConnection: close\r\n";
  if (answer.manner == Manner::kChunked)
    return head + "Transfer-Encoding: chunked\r\n\r\n" + Chunks(answer.body);
  return head + "Content-Length: " + std::to_string(answer.body.size()) + kBlankLine + answer.body;
}

}  // namespace bench::companion

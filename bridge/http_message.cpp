#include "bridge/http_message.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "bridge/text.h"

namespace vek::bridge {
namespace {

constexpr std::string_view kProtocol = "HTTP/1.";
constexpr std::string_view kEndOfHead = "\r\n\r\n";
constexpr std::string_view kLineEnd = "\r\n";

template <typename Number>
std::optional<Number> ReadNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return std::nullopt;
  return number;
}

// "HTTP/1.1 200 OK"
std::optional<int> ReadStatus(std::string_view line) {
  const std::size_t blank = line.find(' ');
  if (!line.starts_with(kProtocol) || blank == std::string_view::npos) return std::nullopt;
  return ReadNumber<int>(line.substr(blank));
}

std::optional<std::size_t> ReadLength(std::string_view head) {
  while (!head.empty()) {
    const std::string_view line = head.substr(0, head.find(kLineEnd));
    head.remove_prefix(std::min(line.size() + kLineEnd.size(), head.size()));
    const std::size_t colon = line.find(':');
    if (colon != std::string_view::npos && EqualsIgnoringCase(line.substr(0, colon), "content-length"))
      return ReadNumber<std::size_t>(line.substr(colon + 1));
  }
  return std::nullopt;
}

}  // namespace

std::string ExecuteRequest(const Address& address, std::string_view body) {
  std::string request = "POST /execute HTTP/1.1\r\nHost: " + address.Text() +
                        "\r\nContent-Type: application/json\r\nConnection: close\r\nContent-Length: " +
                        std::to_string(body.size()) + std::string(kEndOfHead);
  return request.append(body);
}

HttpAnswer ReadHttpAnswer(std::string_view bytes, bool ended) {
  using State = HttpAnswer::State;
  if (bytes.substr(0, kProtocol.size()) != kProtocol.substr(0, bytes.size())) return {State::kForeign, 0, {}};
  const std::size_t head_end = bytes.find(kEndOfHead);
  if (head_end == std::string_view::npos) return {};
  const std::string_view head = bytes.substr(0, head_end);
  const auto status = ReadStatus(head.substr(0, head.find(kLineEnd)));
  if (!status) return {State::kForeign, 0, {}};
  const std::string_view body = bytes.substr(head_end + kEndOfHead.size());
  const auto length = ReadLength(head);
  if (length ? body.size() < *length : !ended) return {};
  return {State::kComplete, *status, std::string(body.substr(0, length.value_or(body.size())))};
}

}  // namespace vek::bridge

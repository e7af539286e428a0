#include "bridge/addin_link.h"

#include <algorithm>

#include "bridge/batch_plan.h"
#include "bridge/http_message.h"
#include "bridge/stream_socket.h"

namespace vek::bridge {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using Ending = Exchange::Ending;

// How long a cancellation can go unnoticed.
constexpr milliseconds kSlice{100};
constexpr std::size_t kReceiveBuffer = 64 * 1024;

// One request and its answer.
class Conversation {
 public:
  Conversation(const Address& address, const AddinLink::Limits& limits, const KeepWaiting& keep_waiting)
      : address_(address), limits_(limits), keep_waiting_(keep_waiting) {}

  Exchange Ask(std::string_view request) {
    if (!socket_.BeginConnecting(address_) || !Await(StreamSocket::Readiness::kSending, limits_.connecting) ||
        !socket_.IsConnected())
      return Ended(Ending::kNobodyListens);
    const bool ascii =
        std::ranges::all_of(request, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    while (!request.empty()) {
      if (!Await(StreamSocket::Readiness::kSending, limits_.answering)) return Ended(Ending::kSilent);
      const auto count = socket_.Send(request);
      if (count <= 0) return Ended(Ending::kClosed);
      request.remove_prefix(static_cast<std::size_t>(count));
    }
    // The add-in counts characters where a request tells bytes, and would wait for the rest. Where the two
    // are the same the connection stays open both ways, as most programs in between expect it.
    if (!ascii) socket_.EndSending();
    return Listen();
  }

 private:
  Exchange Listen() {
    std::string bytes, buffer(kReceiveBuffer, '\0');
    for (bool ended = false; !ended;) {
      if (!Await(StreamSocket::Readiness::kReceiving, limits_.answering)) return Ended(Ending::kSilent);
      const auto count = socket_.Receive(buffer.data(), buffer.size());
      ended = count <= 0;
      if (count > 0) bytes.append(buffer, 0, static_cast<std::size_t>(count));
      HttpAnswer answer = ReadHttpAnswer(bytes, ended);
      switch (answer.state) {
        case HttpAnswer::State::kComplete:
          return {Ending::kAnswered, answer.status, std::move(answer.body)};
        case HttpAnswer::State::kForeign:
          return Ended(Ending::kForeign);
        case HttpAnswer::State::kIncomplete:
          break;
      }
    }
    return Ended(bytes.empty() ? Ending::kClosed : Ending::kCut);
  }

  // Waits until the socket is ready; false when the time since the beginning is over or nobody wants the
  // answer.
  bool Await(StreamSocket::Readiness readiness, milliseconds limit) {
    while (!socket_.Await(readiness, kSlice)) {
      const auto waited = std::chrono::duration_cast<milliseconds>(Clock::now() - begun_);
      abandoned_ = !keep_waiting_(waited);
      if (abandoned_ || waited >= limit) return false;
    }
    return true;
  }

  Exchange Ended(Ending ending) const { return {abandoned_ ? Ending::kAbandoned : ending, 0, {}}; }

  const Address& address_;
  const AddinLink::Limits& limits_;
  const KeepWaiting& keep_waiting_;
  const Clock::time_point begun_ = Clock::now();
  StreamSocket socket_;
  bool abandoned_ = false;
};

}  // namespace

Creo::Answer AddinLink::Post(std::span<const Step> steps, const KeepWaiting& keep_waiting) {
  const std::string request = ExecuteRequest(address_, ExecuteBody(steps));
  return ReadExchange(Conversation(address_, limits_, keep_waiting).Ask(request), steps, address_.Text());
}

}  // namespace vek::bridge

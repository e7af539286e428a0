#include "bench/host/console/input_lines.h"

#include <windows.h>

#include <algorithm>
#include <mutex>
#include <string_view>
#include <thread>
#include <utility>

namespace bench {

struct InputLines::Shared {
  std::mutex lock;
  std::vector<std::string> lines;
  bool ended = false;
  HANDLE changed = CreateEventW(nullptr, FALSE, FALSE, nullptr);

  ~Shared() { CloseHandle(changed); }

  void Add(std::string line) {
    if (line.ends_with('\r')) line.pop_back();
    const std::lock_guard guard(lock);
    lines.push_back(std::move(line));
    SetEvent(changed);
  }

  // Not by way of the C runtime: its lock on the stream would be held while the process wants to end.
  void ReadAll() {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    std::string pending;
    char bytes[4096];
    for (DWORD count = 0; ReadFile(input, bytes, sizeof bytes, &count, nullptr) && count > 0;) {
      pending.append(bytes, count);
      for (auto end = pending.find('\n'); end != std::string::npos; end = pending.find('\n')) {
        Add(pending.substr(0, end));
        pending.erase(0, end + 1);
      }
    }
    if (!pending.empty()) Add(std::move(pending));
    const std::lock_guard guard(lock);
    ended = true;
    SetEvent(changed);
  }
};

InputLines::InputLines() : shared_(std::make_shared<Shared>()) {
  std::thread([shared = shared_] { shared->ReadAll(); }).detach();
}

std::vector<std::string> InputLines::Take() {
  const std::lock_guard guard(shared_->lock);
  return std::exchange(shared_->lines, {});
}

bool InputLines::Ended() const {
  const std::lock_guard guard(shared_->lock);
  return shared_->ended && shared_->lines.empty();
}

void InputLines::Wait(std::optional<std::chrono::steady_clock::time_point> until) {
  using std::chrono::milliseconds;
  DWORD timeout = INFINITE;
  if (until) {
    const auto left = std::chrono::ceil<milliseconds>(*until - std::chrono::steady_clock::now()).count();
    timeout = static_cast<DWORD>(std::clamp<long long>(left, 0, 60'000));
  }
  WaitForSingleObject(shared_->changed, timeout);
}

}  // namespace bench

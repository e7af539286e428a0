#include "bench/host/user_interface.h"

#include <algorithm>
#include <thread>
#include <utility>
#include <vector>

namespace bench {

std::optional<std::wstring> UserInterface::ShowMessage(Message message) {
  messages_.push_back(std::move(message));
  if (messages_.size() > kMessagesKept) messages_.pop_front();
  return TakeAnswer();
}

std::optional<std::wstring> UserInterface::TakeAnswer() {
  if (answers_.empty()) return std::nullopt;
  std::wstring answer = std::move(answers_.front());
  answers_.pop_front();
  return answer;
}

bool UserInterface::CloseDialog(const std::string& name) {
  for (auto& [id, timer] : timers_)
    if (timer.dialog == name) timer.running = false;
  return dialogs_.erase(name) > 0;
}

ProUITimer UserInterface::CreateTimer(ProUITimerAction action, ProAppData data) {
  timers_.emplace(next_timer_, Timer{action, data, {}});
  return next_timer_++;
}

bool UserInterface::StartTimer(ProUITimer timer, const std::string& dialog, std::chrono::milliseconds pause,
                               bool repeat) {
  const auto found = timers_.find(timer);
  if (found == timers_.end()) return false;
  found->second.dialog = dialog;
  found->second.pause = pause;
  found->second.repeat = repeat;
  found->second.running = true;
  found->second.due = Clock::now() + pause;
  return true;
}

bool UserInterface::StopTimer(ProUITimer timer) {
  const auto found = timers_.find(timer);
  if (found == timers_.end()) return false;
  found->second.running = false;
  return true;
}

void UserInterface::FireDue(Clock::time_point now) {
  if (paused_ || firing_) return;
  std::vector<ProUITimer> due;
  for (const auto& [id, timer] : timers_)
    if (timer.running && timer.due <= now) due.push_back(id);

  firing_ = true;
  for (const ProUITimer id : due) {
    const auto found = timers_.find(id);
    // One that fired before may have stopped or destroyed this one.
    if (found == timers_.end() || !found->second.running) continue;
    Timer& timer = found->second;
    timer.running = timer.repeat;
    if (timer.repeat) timer.due = Clock::now() + timer.pause;
    const auto action = timer.action;
    const auto data = timer.data;
    // The action gets a copy, since it may destroy the timer or write into the name.
    std::string dialog = timer.dialog;
    action(dialog.data(), id, data);
  }
  firing_ = false;
}

void UserInterface::TickFor(std::chrono::milliseconds span) {
  const auto end = Clock::now() + span;
  while (Clock::now() < end) {
    FireDue(Clock::now());
    const auto next = NextDue();
    const auto wake = std::min(next.value_or(end), end);
    // A sleep of less than a millisecond does not sleep at all on some systems.
    std::this_thread::sleep_for(std::max<Clock::duration>(wake - Clock::now(), std::chrono::milliseconds(1)));
  }
  FireDue(Clock::now());
}

std::optional<UserInterface::Clock::time_point> UserInterface::NextDue() const {
  std::optional<Clock::time_point> next;
  if (paused_) return next;
  for (const auto& [id, timer] : timers_)
    if (timer.running && (!next || timer.due < *next)) next = timer.due;
  return next;
}

void UserInterface::Clear() {
  *this = UserInterface{};
}

}  // namespace bench

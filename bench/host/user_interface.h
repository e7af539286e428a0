// Dialogs, timers and messages, as they are recorded and scripted.
#pragma once

#include <ProUI.h>

#include <chrono>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace bench {

class UserInterface {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr std::size_t kMessagesKept = 1'000;

  struct Message {
    std::wstring title;
    std::wstring text;
  };

  // What the next dialogs answer, in this order: "ok", "cancel", or a path for one that asks for a file.
  // Unasked, they answer with their default.
  void AnswerNext(std::wstring answer) { answers_.push_back(std::move(answer)); }
  std::optional<std::wstring> TakeAnswer();
  // Records the message and takes the next scripted answer, if there is one.
  std::optional<std::wstring> ShowMessage(Message message);
  const std::deque<Message>& Messages() const { return messages_; }

  bool OpenDialog(const std::string& name) { return dialogs_.insert(name).second; }
  bool HasDialog(const std::string& name) const { return dialogs_.contains(name); }
  // Takes the dialog away with the timers that run on it stopped.
  bool CloseDialog(const std::string& name);

  ProUITimer CreateTimer(ProUITimerAction action, ProAppData data);
  bool HasTimer(ProUITimer timer) const { return timers_.contains(timer); }
  bool DestroyTimer(ProUITimer timer) { return timers_.erase(timer) > 0; }
  bool StartTimer(ProUITimer timer, const std::string& dialog, std::chrono::milliseconds pause, bool repeat);
  bool StopTimer(ProUITimer timer);
  std::size_t DialogCount() const { return dialogs_.size(); }
  std::size_t TimerCount() const { return timers_.size(); }

  // Holds the timers back, as a modal state does; a timer that falls due meanwhile fires when they are let
  // go.
  void Pause() { paused_ = true; }
  void Resume() { paused_ = false; }
  bool Paused() const { return paused_; }

  // Fires the timers that are due by now, each at most once. Does nothing while one of them runs.
  void FireDue(Clock::time_point now);
  // Lets every running timer fire once, whatever its time. Does nothing while paused or while one runs.
  void RunTimersOnce() { FireDue(Clock::time_point::max()); }
  // Fires timers as they fall due, for that long.
  void TickFor(std::chrono::milliseconds span);
  // When the next timer falls due; none while no timer runs or all are held back.
  std::optional<Clock::time_point> NextDue() const;

  void Clear();

 private:
  struct Timer {
    ProUITimerAction action;
    ProAppData data;
    std::string dialog;
    std::chrono::milliseconds pause{0};
    bool repeat = false;
    bool running = false;
    Clock::time_point due{};
  };

  std::deque<Message> messages_;
  std::deque<std::wstring> answers_;
  std::set<std::string> dialogs_;
  std::map<ProUITimer, Timer> timers_;
  ProUITimer next_timer_ = 1;
  bool paused_ = false;
  bool firing_ = false;
};

}  // namespace bench

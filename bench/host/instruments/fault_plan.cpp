#include "bench/host/instruments/fault_plan.h"

#include <algorithm>

namespace bench {

void FaultPlan::Fail(const std::string& name, int status, int first, int last) {
  scripts_.push_back({name, first, std::max(first, last), status});
}

void FaultPlan::NoEffect(const std::string& name, int first, int last) {
  Fail(name, 0, first, last);
}

void FaultPlan::FailNumber(int number, int status) {
  by_number_[calls_ + static_cast<std::uint64_t>(number)] = status;
}

void FaultPlan::Before(const std::string& name, std::function<void()> action, int first) {
  interruptions_.push_back({name, first, std::move(action)});
}

void FaultPlan::Interrupt(const std::string& name) {
  std::vector<std::function<void()>> due;
  for (Interruption& interruption : interruptions_)
    if (interruption.name == name && --interruption.left == 0) due.push_back(std::move(interruption.action));
  std::erase_if(interruptions_, [](const Interruption& interruption) { return interruption.left <= 0; });
  for (const auto& action : due) action();
}

void FaultPlan::Delay(const std::string& name, int milliseconds) {
  delays_[name] += milliseconds;
}

FaultPlan::Outcome FaultPlan::Next(const std::string& name) {
  Outcome outcome;
  ++calls_;
  Interrupt(name);
  if (const auto delay = delays_.find(name); delay != delays_.end()) {
    outcome.delay_ms = delay->second;
    delays_.erase(delay);
  }
  // Every script of that name counts the call, also when another one decides it.
  for (Script& script : scripts_) {
    if (script.name != name) continue;
    ++script.seen;
    if (script.seen >= script.first && script.seen <= script.last && !outcome.status)
      outcome.status = script.status;
  }
  std::erase_if(scripts_, [](const Script& script) { return script.seen >= script.last; });
  if (const auto numbered = by_number_.find(calls_); numbered != by_number_.end()) {
    outcome.status = numbered->second;
    by_number_.erase(numbered);
  }
  return outcome;
}

void FaultPlan::Clear() {
  scripts_.clear();
  interruptions_.clear();
  delays_.clear();
  by_number_.clear();
  calls_ = 0;
}

}  // namespace bench

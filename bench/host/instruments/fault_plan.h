// The fault plan: which calls are to fail, to do nothing, or to take longer.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace bench {

class FaultPlan {
 public:
  // The `first`th to the `last`th next call of that name (counted from 1) fails with `status`.
  void Fail(const std::string& name, int status, int first = 1, int last = 0);
  // The same calls succeed and do nothing.
  void NoEffect(const std::string& name, int first = 1, int last = 0);
  // The call with that number, counted over all calls from now on (1 is the next), fails with `status`.
  void FailNumber(int number, int status);
  // Runs just before the `first`th next call of that name: for what happens to a model between two calls.
  void Before(const std::string& name, std::function<void()> action, int first = 1);
  // The next call of that name takes that much longer.
  void Delay(const std::string& name, int milliseconds);

  // What was asked for the call that is just being made; counts it. Calls that can't be failed are not asked
  // about.
  struct Outcome {
    std::optional<int> status;  // the scripted status; 0 means success without effect
    int delay_ms = 0;
  };
  Outcome Next(const std::string& name);

  void Clear();

 private:
  struct Script {
    std::string name;
    int first;
    int last;
    int status;
    int seen = 0;
  };
  struct Interruption {
    std::string name;
    int left;  // calls until it happens
    std::function<void()> action;
  };
  // The actions that are due with a call of that name.
  void Interrupt(const std::string& name);

  std::vector<Script> scripts_;
  std::vector<Interruption> interruptions_;
  std::map<std::string, int> delays_;
  std::map<std::uint64_t, int> by_number_;
  std::uint64_t calls_ = 0;
};

}  // namespace bench

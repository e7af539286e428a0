// The frame of every toolkit call: thread check, journal, faults.
//
//   ProError ProMdlTypeGet(ProMdl model, ProMdlType* type) {
//     HOST_CALL(model) {
//       ...
//       return PRO_TK_NO_ERROR;
//     };
//   }
#pragma once

#include <ProObjects.h>

#include <string>

namespace bench {

// One argument as the journal shows it.
std::string Describe(const void* pointer);
std::string Describe(const wchar_t* text);
std::string Describe(const char* text);
std::string Describe(int number);
std::string Describe(double number);
std::string Describe(const ProModelitem* item);
std::string Describe(ProType type);

template <typename... Args>
std::string DescribeArguments(const Args&... args) {
  std::string text;
  ((text += (text.empty() ? "" : ", ") + Describe(args)), ...);
  return text;
}

class CallFrame {
 public:
  // `can_fail` is false for calls that free and for the timer's re-arming: no script reaches them.
  CallFrame(const char* name, std::string arguments, bool can_fail);

  // Runs the call unless it is scripted to fail or to do nothing. An exception becomes a general error, and
  // what it says goes to the host's complaints.
  template <typename Body>
  ProError operator%(Body&& body) {
    if (scripted_) return Finish(status_);
    try {
      return Finish(body());
    } catch (...) {
      return FinishAfterException();
    }
  }

 private:
  ProError Finish(ProError status);
  ProError FinishAfterException();

  unsigned long long number_;
  bool on_main_thread_ = true;
  bool scripted_ = false;
  ProError status_ = PRO_TK_NO_ERROR;
};

// The name of the call that is being made, for the ledger's violations.
const std::string& CurrentCall();

}  // namespace bench

#define HOST_CALL(...) \
  return ::bench::CallFrame(__func__, ::bench::DescribeArguments(__VA_ARGS__), true) % [&]() -> ProError
#define HOST_CALL_THAT_NEVER_FAILS(...) \
  return ::bench::CallFrame(__func__, ::bench::DescribeArguments(__VA_ARGS__), false) % [&]() -> ProError

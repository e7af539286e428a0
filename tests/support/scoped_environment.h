// A variable of this process' environment with another value for a while.
#pragma once

#include <windows.h>

#include <string>

namespace vek::support {

class ScopedEnvironment {
 public:
  ScopedEnvironment(const wchar_t* name, const std::wstring& value) : name_(name) {
    was_set_ = ::GetEnvironmentVariableW(name, nullptr, 0) > 0;
    wchar_t before[MAX_PATH] = {};
    ::GetEnvironmentVariableW(name, before, MAX_PATH);
    before_ = before;
    ::SetEnvironmentVariableW(name, value.c_str());
  }
  ~ScopedEnvironment() { ::SetEnvironmentVariableW(name_, was_set_ ? before_.c_str() : nullptr); }
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

 private:
  const wchar_t* name_;
  std::wstring before_;
  bool was_set_ = false;
};

}  // namespace vek::support

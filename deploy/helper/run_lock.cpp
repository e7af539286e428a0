#include "deploy/helper/run_lock.h"

#include <windows.h>

#include "addin/text/format.h"

namespace vek::helper {

RunLock::RunLock(const Installation& installation) {
  const HANDLE file = ::CreateFileW(installation.Lock().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    error_ = ::GetLastError();
  else
    file_ = file;
}

RunLock::~RunLock() {
  if (file_) ::CloseHandle(file_);
}

Outcome RunLock::Refusal() const {
  if (error_ == ERROR_SHARING_VIOLATION) return {ExitCode::kBusy, L"another helper is at work"};
  return {ExitCode::kFailed, Format(L"the folder can't be written to (error %lu)", error_)};
}

}  // namespace vek::helper

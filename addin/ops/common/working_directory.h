// Borrowing the host's working directory for the time of one operation.
#pragma once

#include <ProToolkit.h>

#include <string_view>

namespace vek {

class WorkingDirectoryGuard {
 public:
  // Changes to `wanted`; nothing at all is done for an empty one.
  explicit WorkingDirectoryGuard(std::wstring_view wanted);
  // Changes back.
  ~WorkingDirectoryGuard();
  WorkingDirectoryGuard(const WorkingDirectoryGuard&) = delete;
  WorkingDirectoryGuard& operator=(const WorkingDirectoryGuard&) = delete;

  bool changed() const { return changed_; }
  // The status of the change; -2 for a directory of 260 characters or more.
  int status() const { return status_; }

 private:
  ProPath saved_{};
  bool saved_ok_ = false;
  bool changed_ = false;
  int status_ = 0;
};

}  // namespace vek

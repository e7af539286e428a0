// One helper at a time in a folder: two sessions of the host may start or end at the same moment.
#pragma once

#include "deploy/helper/installation.h"
#include "deploy/helper/outcome.h"

namespace vek::helper {

// Holds the folder from its making to its end, or tells why it can't; never waits.
class RunLock {
 public:
  explicit RunLock(const Installation& installation);
  ~RunLock();
  RunLock(const RunLock&) = delete;
  RunLock& operator=(const RunLock&) = delete;

  explicit operator bool() const { return file_ != nullptr; }
  // Why the folder isn't held.
  Outcome Refusal() const;

 private:
  void* file_ = nullptr;
  unsigned long error_ = 0;
};

}  // namespace vek::helper

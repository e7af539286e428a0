// The bridge from the server thread to the host's main thread: a rendezvous of exactly one batch.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

#include "addin/server/operation_result.h"
#include "addin/server/provider.h"

namespace vek {

// A manual-reset event: once signalled it stays signalled.
class Event {
 public:
  void Signal();
  // True when the event was signalled within `limit`.
  bool WaitFor(std::chrono::milliseconds limit);

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool signalled_ = false;
};

class CreoMcpMainThread {
 public:
  static constexpr std::chrono::milliseconds kBatchWait{120'000};
  static constexpr const wchar_t* kNotInitialised = L"MCP provider not initialised.";

  // Shared by the waiter and the slot, and by the pump while it runs. The pump writes the results before it
  // signals; the waiter reads them only after the signal, and not at all after a time-out.
  struct PendingBatch {
    OperationList operations;
    BatchResults results;
    std::wstring errorMessage;
    bool succeeded = false;
    Event completed;
  };

  explicit CreoMcpMainThread(std::chrono::milliseconds batch_wait = kBatchWait);

  // Main thread: makes the provider known, from when on batches are taken.
  void Publish(const CreoMcpProvider* provider);

  // Any thread: the published provider, or null.
  const CreoMcpProvider* Provider() const;

  // Server thread: hands a batch over and blocks until it has run or the wait is over. On true `results`
  // holds the results, on false `error_message` says why. A batch that runs while the wait ends runs to its
  // end all the same.
  bool Submit(const OperationList& operations, BatchResults& results, std::wstring& error_message);

  // Main thread: runs the waiting batch, if there is one, to its end.
  void Pump();

  // Main thread: withdraws the provider and drops a batch that has not started.
  void Shutdown();

 private:
  const std::chrono::milliseconds batch_wait_;
  std::atomic<const CreoMcpProvider*> provider_{nullptr};
  std::shared_ptr<PendingBatch> pendingSlot_;
  std::mutex batchLock_;  // guards changes of provider_, and pendingSlot_
};

}  // namespace vek

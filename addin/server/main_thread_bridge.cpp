#include "addin/server/main_thread_bridge.h"

#include <exception>
#include <utility>

#include "addin/text/format.h"

namespace vek {
namespace {

// The server tells a time-out from other failures by this text's first words.
constexpr const wchar_t* kTimedOut = L"Timed out waiting for MCP batch execution on the Creo main thread.";

}  // namespace

void Event::Signal() {
  // Under the lock to its end: the waiter may destroy the event as soon as it has seen the flag.
  const std::lock_guard lock(mutex_);
  signalled_ = true;
  changed_.notify_all();
}

bool Event::WaitFor(std::chrono::milliseconds limit) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, limit, [this] { return signalled_; });
}

CreoMcpMainThread::CreoMcpMainThread(std::chrono::milliseconds batch_wait) : batch_wait_(batch_wait) {}

void CreoMcpMainThread::Publish(const CreoMcpProvider* provider) {
  const std::lock_guard lock(batchLock_);
  provider_ = provider;
}

const CreoMcpProvider* CreoMcpMainThread::Provider() const {
  return provider_;
}

bool CreoMcpMainThread::Submit(const OperationList& operations, BatchResults& results,
                               std::wstring& error_message) {
  if (!Provider()) {
    error_message = kNotInitialised;
    return false;
  }
  const auto batch = std::make_shared<PendingBatch>();
  batch->operations = operations;
  {
    const std::lock_guard lock(batchLock_);
    pendingSlot_ = batch;
  }
  if (!batch->completed.WaitFor(batch_wait_)) {
    const std::lock_guard lock(batchLock_);
    if (pendingSlot_ == batch) pendingSlot_.reset();
    error_message = kTimedOut;
    return false;
  }
  if (!batch->succeeded) {
    error_message = batch->errorMessage;
    return false;
  }
  std::swap(results, batch->results);
  return true;
}

void CreoMcpMainThread::Pump() {
  std::shared_ptr<PendingBatch> batch;
  const CreoMcpProvider* provider = nullptr;
  {
    const std::lock_guard lock(batchLock_);
    provider = provider_;
    if (!pendingSlot_ || !provider) return;
    batch = std::move(pendingSlot_);
    pendingSlot_.reset();
  }
  try {
    batch->results = provider->ExecuteBatch(batch->operations);
    batch->succeeded = true;
  } catch (const std::exception& thrown) {
    batch->errorMessage = Format(L"MCP batch execution failed: %S", thrown.what());
  } catch (...) {
    batch->errorMessage = L"MCP batch execution failed with an unknown exception.";
  }
  batch->completed.Signal();
}

void CreoMcpMainThread::Shutdown() {
  const std::lock_guard lock(batchLock_);
  provider_ = nullptr;
  pendingSlot_.reset();
}

}  // namespace vek

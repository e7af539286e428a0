// Opaque handles: numbers in the guise of pointers, each given once.
//
// No memory has such an address, so a caller that looks behind a handle fails at once, and a handle that was
// freed never comes back to life as another one.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <utility>

namespace bench {

// The next address that was never given out; beyond what any 64-bit process can map.
inline void* NextOpaqueAddress() {
  static std::uintptr_t last = std::uintptr_t{0x7E00'0000'0000'0000};
  last += 16;
  return reinterpret_cast<void*>(last);
}

template <typename Handle, typename Record>
class OpaqueHandles {
 public:
  Handle Enter(Record record) {
    const auto handle = static_cast<Handle>(NextOpaqueAddress());
    records_.emplace(handle, std::move(record));
    return handle;
  }

  // What stands behind the handle, or null.
  Record* Find(Handle handle) {
    const auto found = records_.find(handle);
    return found == records_.end() ? nullptr : &found->second;
  }

  void Remove(Handle handle) { records_.erase(handle); }

 private:
  std::unordered_map<Handle, Record> records_;
};

}  // namespace bench

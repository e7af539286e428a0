// What a test and the library that makes its disks small have in common: a file that both map.
#pragma once

#include <atomic>
#include <cstdint>

namespace vek::kills {

inline constexpr const char* kMapVariable = "VEK_SMALL_DISKS";
inline constexpr int kMostDisks = 8;
inline constexpr std::int64_t kEndless = -1;

struct SmallDiskMap {
  struct Disk {
    char folder[512];                // with a slash behind it; empty for none
    std::atomic<std::int64_t> room;  // bytes that can still be written below the folder
  };
  Disk disks[kMostDisks];
};
static_assert(std::atomic<std::int64_t>::is_always_lock_free);

}  // namespace vek::kills

// Folders that behave as disks with little room, for a bench that is started with them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "tests/kills/small_disk_map.h"

namespace vek::kills {

class SmallDisks {
 public:
  SmallDisks();
  ~SmallDisks();
  SmallDisks(const SmallDisks&) = delete;
  SmallDisks& operator=(const SmallDisks&) = delete;

  // What a program's environment must hold for its disks to be these.
  std::map<std::string, std::string> Environment() const;

  // How many bytes can still be written to files below that folder, from now on; kEndless lifts the limit.
  void SetRoom(const std::filesystem::path& folder, std::int64_t bytes);

 private:
  std::filesystem::path file_;
  SmallDiskMap* map_ = nullptr;
};

}  // namespace vek::kills

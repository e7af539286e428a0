#include "tests/kills/small_disks.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>

namespace vek::kills {

SmallDisks::SmallDisks()
    : file_(std::filesystem::temp_directory_path() / ("vek_small_disks_" + std::to_string(getpid()))) {
  const int file = open(file_.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (file < 0 || ftruncate(file, sizeof(SmallDiskMap)) != 0) throw std::runtime_error("no map of disks");
  void* const map = mmap(nullptr, sizeof(SmallDiskMap), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  close(file);
  if (map == MAP_FAILED) throw std::runtime_error("no map of disks");
  map_ = static_cast<SmallDiskMap*>(map);
}

SmallDisks::~SmallDisks() {
  munmap(map_, sizeof(SmallDiskMap));
  std::filesystem::remove(file_);
}

std::map<std::string, std::string> SmallDisks::Environment() const {
  return {{"LD_PRELOAD", VEK_SMALL_DISK_LIBRARY}, {kMapVariable, file_.string()}};
}

void SmallDisks::SetRoom(const std::filesystem::path& folder, std::int64_t bytes) {
  const std::string path = std::filesystem::weakly_canonical(folder).string() + "/";
  for (SmallDiskMap::Disk& disk : map_->disks) {
    if (disk.folder[0] != '\0' && path != disk.folder) continue;
    disk.room = bytes;
    if (disk.folder[0] == '\0') path.copy(disk.folder, sizeof disk.folder - 1);
    return;
  }
  throw std::logic_error("too many disks");
}

}  // namespace vek::kills

// Makes folders behave as disks with little room, for a program that was started with this library preloaded.
//
// What is written to files below such a folder takes of its room; what no longer fits is cut short, and then
// refused with ENOSPC, as a full disk does it. Wine writes files in the process that asks for it, and so
// comes through here.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/kills/small_disk_map.h"

namespace {

using vek::kills::SmallDiskMap;

SmallDiskMap* MapOfEnvironment() {
  const char* const path = std::getenv(vek::kills::kMapVariable);
  const int file = path == nullptr ? -1 : open(path, O_RDWR | O_CLOEXEC);
  if (file < 0) return nullptr;
  void* const map = mmap(nullptr, sizeof(SmallDiskMap), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  close(file);
  return map == MAP_FAILED ? nullptr : static_cast<SmallDiskMap*>(map);
}

// The disk that a file lies on; null for an endless one, and for what is no file.
SmallDiskMap::Disk* DiskOf(int file) {
  static SmallDiskMap* const map = MapOfEnvironment();
  struct stat facts;
  if (map == nullptr || fstat(file, &facts) != 0 || !S_ISREG(facts.st_mode)) return nullptr;
  char link[64], path[4096];
  std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
  const ssize_t length = readlink(link, path, sizeof path - 1);
  if (length <= 0) return nullptr;
  path[length] = '\0';
  for (SmallDiskMap::Disk& disk : map->disks)
    if (disk.folder[0] != '\0' && std::strncmp(path, disk.folder, std::strlen(disk.folder)) == 0)
      return disk.room >= 0 ? &disk : nullptr;
  return nullptr;
}

// Asks for `wanted` bytes and writes as many as there is room for.
template <typename Write>
ssize_t WriteWithin(int file, std::size_t wanted, Write&& write_some) {
  const int error = errno;
  SmallDiskMap::Disk* const disk = DiskOf(file);
  errno = error;
  if (disk == nullptr || wanted == 0) return write_some(wanted);
  const auto granted = std::min<std::int64_t>(static_cast<std::int64_t>(wanted), disk->room);
  if (granted <= 0) {
    errno = ENOSPC;
    return -1;
  }
  const ssize_t written = write_some(static_cast<std::size_t>(granted));
  if (written > 0) disk->room -= written;
  return written;
}

template <typename Function>
Function Next(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

ssize_t write(int file, const void* bytes, size_t count) {
  static const auto next = Next<ssize_t (*)(int, const void*, size_t)>("write");
  return WriteWithin(file, count, [=](std::size_t granted) { return next(file, bytes, granted); });
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t at) {
  static const auto next = Next<ssize_t (*)(int, const void*, size_t, off64_t)>("pwrite64");
  return WriteWithin(file, count, [=](std::size_t granted) { return next(file, bytes, granted, at); });
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t at) {
  return pwrite64(file, bytes, count, at);
}
}

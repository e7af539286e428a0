// The files of native tests. Paths are ASCII there.
#include <filesystem>

#include "addin/platform/files.h"

namespace vek {

bool PathExists(const std::wstring& path) {
  std::error_code ignored;
  return std::filesystem::exists(std::filesystem::path(path), ignored);
}

}  // namespace vek

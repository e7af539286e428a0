// The files of native tests, whose paths are UTF-8.
#include <filesystem>

#include "addin/platform/files.h"
#include "addin/text/utf8.h"

namespace vek {

bool PathExists(const std::wstring& path) {
  std::error_code ignored;
  return std::filesystem::exists(std::filesystem::path(EncodeUtf8(path)), ignored);
}

}  // namespace vek

#include "deploy/helper/verification.h"

#include <cstdint>

#include "addin/platform/files.h"
#include "deploy/helper/disk.h"
#include "deploy/helper/sha256.h"

namespace vek::helper {
namespace {

constexpr std::uint64_t kLongestManifest = 1u << 20;  // bytes

}  // namespace

std::optional<std::string> ReadVerified(const std::wstring& path, const ManifestFile& file) {
  // The size first: it spares the reading of what can't be the file.
  if (FileSize(path) != file.size) return std::nullopt;
  std::string bytes;
  if (!ReadWholeFile(path, bytes)) return std::nullopt;
  if (bytes.size() != file.size || Sha256(bytes) != file.sha256) return std::nullopt;
  return bytes;
}

std::string ReadManifestBytes(const std::wstring& path) {
  const auto size = FileSize(path);
  std::string bytes;
  if (!size || *size > kLongestManifest || !ReadWholeFile(path, bytes)) return {};
  return bytes;
}

}  // namespace vek::helper

#include "deploy/helper/resource_bytes.h"

#include <windows.h>

namespace vek::helper {

std::string_view ResourceBytes(int id) {
  const HRSRC found = ::FindResourceW(nullptr, MAKEINTRESOURCEW(id), MAKEINTRESOURCEW(10));  // RT_RCDATA
  const HGLOBAL loaded = found ? ::LoadResource(nullptr, found) : nullptr;
  const void* bytes = loaded ? ::LockResource(loaded) : nullptr;
  if (!bytes) return {};
  return {static_cast<const char*>(bytes), ::SizeofResource(nullptr, found)};
}

}  // namespace vek::helper

// Whether a file is the one that a manifest means.
#pragma once

#include <optional>
#include <string>

#include "deploy/helper/manifest.h"

namespace vek::helper {

// The bytes of the file at `path` if they have the size and the digest that the manifest tells; none
// otherwise, also when the file isn't there or can't be read.
std::optional<std::string> ReadVerified(const std::wstring& path, const ManifestFile& file);

// The bytes of the manifest at `path`; empty when there is none that can be read, or one too long to be one.
std::string ReadManifestBytes(const std::wstring& path);

}  // namespace vek::helper

// The digest by which a file is recognised.
#pragma once

#include <string>
#include <string_view>

namespace vek::helper {

// The SHA-256 digest as 64 hexadecimal digits in lower case; empty when the system can't compute it, which is
// the digest of nothing.
std::string Sha256(std::string_view bytes);

}  // namespace vek::helper

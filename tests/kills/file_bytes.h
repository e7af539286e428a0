// Files as bytes, and bytes as a request holds them.
#pragma once

#include <filesystem>
#include <string>

namespace vek::kills {

// Empty for a file that can't be read.
std::string BytesOf(const std::filesystem::path& file);

// The bytes in base64, with up to two blanks behind them that save the padding: they mean nothing in a STEP
// file.
std::string Base64Of(std::string bytes);

}  // namespace vek::kills

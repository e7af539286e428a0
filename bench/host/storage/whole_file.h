// Files that are there whole or not at all.
#pragma once

#include <string>
#include <string_view>

namespace bench {

// Writes the bytes beside the path first and puts them in its place, also over a file, once they are complete
// on the disk. On failure nothing is left behind, a complaint says why, and the result is false.
bool WriteWholeFile(const std::wstring& path, std::string_view bytes);

}  // namespace bench

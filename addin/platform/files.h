// Files and directories of the disk that the add-in runs on.
#pragma once

#include <string>

namespace vek {

// Whether anything stands at `path`.
bool PathExists(const std::wstring& path);

// Whether something that is not a directory stands at `path`.
bool FileExists(const std::wstring& path);

// Makes `directory` with its parents unless something stands there. False when it could not be made.
bool EnsureDirectory(const std::wstring& directory);

// Milliseconds since the system started, as an unsigned 32-bit count that wraps.
unsigned TickCount();

}  // namespace vek

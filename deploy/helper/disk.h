// What the helper asks of the disk beyond the add-in's own files.h.
//
// The standard library's file system is not used: built with MinGW, it takes a path on a server for one on
// the current drive.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vek::helper {

// The file in a folder whose path has no separator at its end.
std::wstring FileIn(const std::wstring& folder, const std::wstring& name);

// In bytes; none when no file can be seen there.
std::optional<std::uint64_t> FileSize(const std::wstring& path);

// Gives a file another path on the same disk, at which nothing stands. 0, or the system's error code.
unsigned long MoveFileTo(const std::wstring& from, const std::wstring& to);

// Removes a folder and the files in it, as far as that goes.
void RemoveFolder(const std::wstring& folder);

}  // namespace vek::helper

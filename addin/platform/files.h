// Files and directories of the disk that the add-in runs on.
#pragma once

#include <string>
#include <vector>

namespace vek {

// Whether anything stands at `path`.
bool PathExists(const std::wstring& path);

// Whether something that is not a directory stands at `path`.
bool FileExists(const std::wstring& path);

// Makes `directory` with its parents unless something stands there. False when it could not be made.
bool EnsureDirectory(const std::wstring& directory);

// The names of the files, not directories, that match a path whose last part may hold wildcards; in the order
// in which the disk gives them. False when it gives nothing at all.
bool FilesMatching(const std::wstring& pattern, std::vector<std::wstring>& names);

// `path` from its root on, without steps back. False when it doesn't fit into 260 characters.
bool FullPath(const std::wstring& path, std::wstring& full);

// Removes a file. 0, or the system's error code.
unsigned long DeleteFileAt(const std::wstring& path);

// The user's folder for what applications keep on this machine; empty when there is none.
std::wstring LocalApplicationData();

// The bytes of a file, whole. False when it can't be opened or read.
bool ReadWholeFile(const std::wstring& path, std::string& bytes);

// Puts a file of these bytes in the place of one that may be there; nobody else may have it open. False when
// that fails, which may leave a part of it.
bool WriteWholeFile(const std::wstring& path, const std::string& bytes);

// The same by way of a file beside it that takes its place once it is complete. False when that fails, which
// leaves what was there.
bool ReplaceWholeFile(const std::wstring& path, const std::string& bytes);

// The value of a variable in the process's environment; empty when it isn't set.
std::wstring EnvironmentVariable(const std::wstring& name);

// Milliseconds since the system started, as an unsigned 32-bit count that wraps.
unsigned TickCount();

}  // namespace vek

// Paths as text, whether or not anything stands there. A backslash separates before a slash does: only a path
// without any backslash is cut at its slashes.
#pragma once

#include <string_view>

namespace vek {

// The text behind the last separator; all of it when there is none.
std::wstring_view NameInPath(std::wstring_view path);

// The text before the last separator; empty when there is none.
std::wstring_view DirectoryInPath(std::wstring_view path);

// `name` up to its last dot.
std::wstring_view WithoutExtension(std::wstring_view name);

// Whether the text is the name of a file and no path: not empty, no separator, no colon.
bool IsPlainFileName(std::wstring_view text);

}  // namespace vek

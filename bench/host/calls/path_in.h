// Paths of callers.
#pragma once

#include <ProToolkit.h>

#include <optional>
#include <string>

namespace bench {

// The path behind a caller's text; nothing when that is no path.
std::optional<std::wstring> ReadPath(const wchar_t* text);

// Whether a file may be written there: its directory is there, and no directory stands in its place.
ProError CheckTarget(const std::wstring& path);

}  // namespace bench

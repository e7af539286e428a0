// Where a screenshot goes.
#pragma once

#include <string>

namespace vek::exchange {

// The full path for a client's text. A relative one lies in the screenshots' own folder below the directory
// for temporary files, and may not climb out of it; an absolute one may lie anywhere. On failure, `error`
// tells why.
bool ResolveScreenshotPath(const std::wstring& output_path, std::wstring& resolved, std::wstring& error);

}  // namespace vek::exchange

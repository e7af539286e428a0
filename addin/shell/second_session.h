// A second session of the host, beside the one that the add-in runs in.
#pragma once

#include <string>

namespace vek {

// Starts it with a model file. -2 for no path or one of 260 characters or more, -4 when there is no such
// file, -1 when it can't be started, or the host's status for a native file that it doesn't know.
int OpenFileInCreoNewWindow(const std::wstring& path);

}  // namespace vek

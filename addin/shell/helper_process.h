// The helper program, which lies beside the add-in: it shows the About dialog and sees to updates.
#pragma once

#include <string>

namespace vek {

// The folder of the add-in's own module, without a trailing backslash; empty when it can't be told.
std::wstring GetModuleDirectory();

// Runs the helper with one argument: "--check-update", "--about" or "--install-pending". True when it was
// started; with `wait`, when it has ended as well. A helper that is not installed is no error beyond the
// false.
bool RunHelper(const wchar_t* argument, bool wait);

}  // namespace vek

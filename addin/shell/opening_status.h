// The statuses with which opening a model ends, beside those of the host, which travel as they came.
#pragma once

namespace vek {

inline constexpr int kLaunchFailed = -1;
inline constexpr int kBadPath = -2;  // none, too long, or without a directory
inline constexpr int kFileNotFound = -4;
inline constexpr int kNameClash = -5;

}  // namespace vek

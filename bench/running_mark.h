// How programs of the bench know that the host still runs.
#pragma once

namespace bench {

// A mutex of this name exists for as long as the host's process does.
inline constexpr const wchar_t* kRunningMark = L"Local\\CreoBenchIsRunning";

}  // namespace bench

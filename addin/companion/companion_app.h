// The companion desktop application, which receives what the add-in measures and asks it to open parts.
#pragma once

namespace vek {

// What LaunchCompanion gives back.
constexpr int kCompanionAlreadyRunning = -1;
constexpr int kCompanionNotLaunched = 0;
constexpr int kCompanionLaunched = 1;

// Any program with the companion's name counts, whichever its folder.
bool IsCompanionRunning();

// Starts the companion unless it runs, and gives it two seconds, on the calling thread, to come up.
int LaunchCompanion();

}  // namespace vek

// The commands that ask the companion application for another part or assembly in the place of the selected
// one. Main thread.
#pragma once

#include <string>

namespace vek {

void CommandReplacePart();
void CommandInspectAssembly();

// Saves the current model and sends the path; without the companion it is started instead.
void RequestPartReplacement(const std::wstring& path);
void RequestAssemblyInspection(const std::wstring& path);

// Saves the current model; the host's status.
int SaveCurrentModel();

}  // namespace vek

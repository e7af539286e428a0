// The add-in's commands in the host's menus. Main thread.
#pragma once

namespace vek {

// Registers menu, commands, icons and the popup menus' entries. A command that can't be registered is not
// there; nothing else depends on it.
void RegisterCommands();

// Takes back what the host would still call once the add-in is gone.
void UnregisterPopupMenus();

}  // namespace vek

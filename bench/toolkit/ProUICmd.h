// Commands: what the user interface can call.
#pragma once

#include "ProToolkit.h"

typedef int uiCmdCmdId;
typedef enum uiCmdPriorities : int { uiCmdPrioDefault = 2 } uiCmdPriority;
typedef enum uiCmdAccessStates : int { ACCESS_REMOVE = 0, ACCESS_AVAILABLE = 3 } uiCmdAccessState;
typedef enum uiCmdAccessModes : int { ACCESS_MODE_NORMAL = 0 } uiCmdAccessMode;
typedef int (*uiCmdCmdActFn)(uiCmdCmdId command, void* value, void* data);
typedef uiCmdAccessState (*uiCmdAccessFn)(uiCmdAccessMode mode);

PRO_TOOLKIT_CALL ProError ProCmdActionAdd(char* name, uiCmdCmdActFn action, uiCmdPriority priority,
                                          uiCmdAccessFn access, ProBoolean in_non_active_window,
                                          ProBoolean in_accessory_window, uiCmdCmdId* command);
PRO_TOOLKIT_CALL ProError ProCmdCmdIdFind(char* name, uiCmdCmdId* command);
PRO_TOOLKIT_CALL ProError ProCmdIconSet(uiCmdCmdId command, char* icon);
// Lets the user put the command where he wants it. The keys are those of the message file.
PRO_TOOLKIT_CALL ProError ProCmdDesignate(uiCmdCmdId command, char* label, char* one_line_help,
                                          char* description, wchar_t* message_file);

// Menus of the menu bar.
#pragma once

#include "ProUICmd.h"

PRO_TOOLKIT_CALL ProError ProMenubarMenuAdd(char* menu, char* label, char* neighbour, ProBoolean behind,
                                            wchar_t* message_file);
// A null neighbour is the end of the menu.
PRO_TOOLKIT_CALL ProError ProMenubarmenuPushbuttonAdd(char* menu, char* button, char* label,
                                                      char* one_line_help, char* neighbour, ProBoolean behind,
                                                      uiCmdCmdId command, wchar_t* message_file);

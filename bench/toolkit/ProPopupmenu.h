// Popup menus, while the host builds them.
#pragma once

#include "ProUICmd.h"

typedef int ProPopupMenuId;

PRO_TOOLKIT_CALL ProError ProPopupmenuIdGet(ProName menu, ProPopupMenuId* id);
// At position -1 the button goes to the end. Texts as they stand, not keys.
PRO_TOOLKIT_CALL ProError ProPopupmenuButtonAdd(ProPopupMenuId menu, int position, ProName button,
                                                wchar_t* label, wchar_t* help, uiCmdCmdId command,
                                                uiCmdAccessFn access, ProAppData data);

// Windows of the host.
#pragma once

#include "ProObjects.h"

PRO_TOOLKIT_CALL ProError ProObjectwindowMdlnameCreate(ProMdlName name, ProType type, int* window);
PRO_TOOLKIT_CALL ProError ProWindowActivate(int window);
// -1 names the current window.
PRO_TOOLKIT_CALL ProError ProWindowRepaint(int window);
PRO_TOOLKIT_CALL ProError ProWindowRefresh(int window);
PRO_TOOLKIT_CALL ProError ProWindowDelete(int window);
PRO_TOOLKIT_CALL ProError ProWindowCurrentGet(int* window);
PRO_TOOLKIT_CALL ProError ProWindowBrowserSizeSet(int window, double percent);
PRO_TOOLKIT_CALL ProError ProWindowURLShow(int window, wchar_t* url);

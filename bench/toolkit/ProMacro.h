// Macros: commands that the host carries out as if the user had given them.
#pragma once

#include "ProToolkit.h"

// Queues a macro's text.
PRO_TOOLKIT_CALL ProError ProMacroLoad(wchar_t* macro);
// Carries out what is queued.
PRO_TOOLKIT_CALL ProError ProMacroExecute(void);

// What the host tells of its own doings.
#pragma once

#include "ProToolkit.h"

// 72: a popup menu is being built.
typedef enum ProNotifyTypes : int { PRO_NOTIFY_NONE = -1 } ProNotifyType;
typedef int (*ProFunction)();
typedef ProError (*ProPopupmenuCreatePostAction)(ProName menu);

PRO_TOOLKIT_CALL ProError ProNotificationSet(ProNotifyType type, ProFunction action);
PRO_TOOLKIT_CALL ProError ProNotificationUnset(ProNotifyType type);

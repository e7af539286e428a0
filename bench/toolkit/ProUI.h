// Dialogs, timers and messages.
#pragma once

#include "ProToolkit.h"

typedef int ProUITimer;
typedef void (*ProUITimerAction)(char* dialog, ProUITimer timer, ProAppData data);

typedef enum ProUIMessageTypes : int { PROUIMESSAGE_INFO = 2 } ProUIMessageType;
typedef enum ProUIMessageButtons : int { PRO_UI_MESSAGE_OK = 6 } ProUIMessageButton;

PRO_TOOLKIT_CALL ProError ProUIDialogCreate(char* name, char* resource);
PRO_TOOLKIT_CALL ProError ProUIDialogDestroy(char* name);
PRO_TOOLKIT_CALL ProError ProUITimerCreate(ProUITimerAction action, ProAppData data, ProName name,
                                           ProUITimer* timer);
PRO_TOOLKIT_CALL ProError ProUITimerDestroy(ProUITimer timer);
PRO_TOOLKIT_CALL ProError ProUIDialogTimerStart(char* dialog, ProUITimer timer, long milliseconds,
                                                ProBoolean repeat);
PRO_TOOLKIT_CALL ProError ProUIDialogTimerStop(ProUITimer timer);

PRO_TOOLKIT_CALL ProError ProUIMessageDialogDisplay(ProUIMessageType type, wchar_t* title, wchar_t* text,
                                                    ProUIMessageButton* buttons,
                                                    ProUIMessageButton default_button,
                                                    ProUIMessageButton* answer);

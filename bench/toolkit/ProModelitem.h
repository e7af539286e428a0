// Names of model items.
#pragma once

#include "ProObjects.h"

PRO_TOOLKIT_CALL ProError ProModelitemByNameInit(ProMdl model, ProType type, ProName name,
                                                 ProModelitem* item);
PRO_TOOLKIT_CALL ProError ProModelitemNameGet(ProModelitem* item, ProName name);
PRO_TOOLKIT_CALL ProError ProModelitemNameSet(ProModelitem* item, ProName name);
PRO_TOOLKIT_CALL ProError ProModelitemMdlGet(ProModelitem* item, ProMdl* model);

// Selections.
#pragma once

#include "ProObjects.h"

PRO_TOOLKIT_CALL ProError ProSelectionAlloc(ProAsmcomppath* path, ProModelitem* item,
                                            ProSelection* selection);
PRO_TOOLKIT_CALL ProError ProSelectionFree(ProSelection* selection);
PRO_TOOLKIT_CALL ProError ProSelectionCopy(ProSelection from, ProSelection* to);
// The path that the selection was made with; one without entries for an item of the model itself.
PRO_TOOLKIT_CALL ProError ProSelectionAsmcomppathGet(ProSelection selection, ProAsmcomppath* path);
PRO_TOOLKIT_CALL ProError ProSelectionModelitemGet(ProSelection selection, ProModelitem* item);
// Frees an array of selections with the selections in it.
PRO_TOOLKIT_CALL ProError ProSelectionarrayFree(ProSelection* selections);
PRO_TOOLKIT_CALL ProError ProSelectionToReference(ProSelection selection, ProReference* reference);

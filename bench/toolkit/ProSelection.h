// Selections.
#pragma once

#include "ProGeomitem.h"

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

typedef struct CreoSelectFunctions ProSelFunctions;
typedef struct CreoSelectEnvironment* ProSelectionEnv;
typedef struct CreoSelectActions* ProSelAppAction;
// Lets the user pick up to `max_count` items of the kinds in `option`, a list with commas. The array is freed
// with ProSelectionarrayFree.
PRO_TOOLKIT_CALL ProError ProSelect(char* option, int max_count, ProSelection* preselected,
                                    ProSelFunctions* functions, ProSelectionEnv environment,
                                    ProSelAppAction actions, ProSelection** selections, int* count);
// The parameters of the picked point on its surface.
PRO_TOOLKIT_CALL ProError ProSelectionUvParamGet(ProSelection selection, double uv[2]);
// Binds a selection to a drawing view, and to a point: of the sheet, when it has a view.
PRO_TOOLKIT_CALL ProError ProSelectionViewSet(ProView view, ProSelection* selection);
PRO_TOOLKIT_CALL ProError ProSelectionPoint3dSet(ProPoint3d point, ProSelection* selection);

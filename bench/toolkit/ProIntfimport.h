// Import of neutral files as new models.
#pragma once

#include "ProMdl.h"

// 6 STEP.
typedef enum ProIntfImportTypes : int { PRO_INTF_IMPORT_STEP = 6 } ProIntfImportType;
// 0 the master representation.
typedef enum ProImportRepTypes : int { PRO_IMPORTREP_MASTER = 0 } ProImportRepType;

// Tells of each layer whether it is to come along.
typedef ProError (*ProIntfimportLayerFilter)(wchar_t* layer, ProAppData data);

// What the file would become: 2 a part, 1 an assembly.
PRO_TOOLKIT_CALL ProError ProIntfimportSourceTypeGet(ProPath path, ProIntfImportType type,
                                                     ProMdlType* source_type);
// A new model of that name and type in session; -1 takes the type from the file. -5 when the name is taken.
PRO_TOOLKIT_CALL ProError ProIntfimportModelWithOptionsMdlnameCreate(
    ProPath path, ProPath profile, ProIntfImportType type, ProMdlType model_type,
    ProImportRepType representation, ProMdlName name, ProIntfimportLayerFilter filter, ProAppData data,
    ProMdl* model);

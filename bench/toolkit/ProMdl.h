// Models: the current one, names, directories, life in session.
#pragma once

#include "ProObjects.h"

typedef enum ProMdlTypes : int {
  PRO_MDL_UNUSED = -1,
  PRO_MDL_ASSEMBLY = 1,
  PRO_MDL_PART = 2,
  PRO_MDL_DRAWING = 4,
} ProMdlType;

typedef enum ProMdlfileTypes : int {
  PRO_MDLFILE_UNUSED = -1,
  PRO_MDLFILE_ASSEMBLY = 1,
  PRO_MDLFILE_PART = 2,
  PRO_MDLFILE_DRAWING = 4,
} ProMdlfileType;

typedef enum ProMdlsubtypes : int { PROMDLSTYPE_NONE = -1 } ProMdlsubtype;

PRO_TOOLKIT_CALL ProError ProMdlCurrentGet(ProMdl* model);
PRO_TOOLKIT_CALL ProError ProMdlTypeGet(ProMdl model, ProMdlType* type);
PRO_TOOLKIT_CALL ProError ProMdlMdlnameGet(ProMdl model, ProMdlName name);
PRO_TOOLKIT_CALL ProError ProMdlDirectoryPathGet(ProMdl model, ProPath directory);
PRO_TOOLKIT_CALL ProError ProMdlModificationVerify(ProMdl model, ProBoolean* modified);
PRO_TOOLKIT_CALL ProError ProMdlToModelitem(ProMdl model, ProModelitem* item);
PRO_TOOLKIT_CALL ProError ProMdlDisplay(ProMdl model);
PRO_TOOLKIT_CALL ProError ProMdlWindowGet(ProMdl model, int* window);
PRO_TOOLKIT_CALL ProError ProMdlSave(ProMdl model);
// Writes a copy into a directory, which is the model's from then on.
PRO_TOOLKIT_CALL ProError ProMdlnameBackup(ProMdl model, wchar_t* directory);
PRO_TOOLKIT_CALL ProError ProMdlErase(ProMdl model);
PRO_TOOLKIT_CALL ProError ProMdlnameRename(ProMdl model, ProMdlName new_name);
PRO_TOOLKIT_CALL ProError ProMdlnameRetrieve(ProMdlName name, ProMdlfileType type, ProMdl* model);
PRO_TOOLKIT_CALL ProError ProSessionMdlList(ProMdlType type, ProMdl** models, int* count);

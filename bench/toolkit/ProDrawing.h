// Drawings: creation from templates, sheets, the models on them.
#pragma once

#include "ProSolid.h"

// The model that a new drawing is to show: its name, and "PRT" or "ASM".
typedef struct CreoModelName {
  ProMdlName name;
  ProMdlExtension type;
} ProModelInfo;
// The same for the older call.
typedef struct CreoModelShortName {
  wchar_t name[80];
  wchar_t type[10];
} ProModel;

// 1 shows the drawing when it is made.
typedef int ProDwgcreateOptions;
// What went wrong while a template was filled; null when nothing did.
typedef struct CreoDrawingErrors* ProDwgcreateErrs;

// -57: the drawing was made, but parts of the template were not; the errors tell which.
PRO_TOOLKIT_CALL ProError ProDrawingFromTemplateCreate(ProMdlName name, ProMdlName template_name,
                                                       ProModelInfo* model, ProDwgcreateOptions options,
                                                       ProDrawing* drawing, ProDwgcreateErrs* errors);
PRO_TOOLKIT_CALL ProError ProDrawingFromTmpltCreate(ProName name, ProName template_name, ProModel* model,
                                                    ProDwgcreateOptions options, ProDrawing* drawing,
                                                    ProDwgcreateErrs* errors);
PRO_TOOLKIT_CALL ProError ProDwgcreateErrsFree(ProDwgcreateErrs* errors);

// -39: the model stands in the drawing already.
PRO_TOOLKIT_CALL ProError ProDrawingSolidAdd(ProDrawing drawing, ProSolid solid);
// An array, freed with ProArrayFree.
PRO_TOOLKIT_CALL ProError ProDrawingSolidsCollect(ProDrawing drawing, ProSolid** solids);
// From 1 on.
PRO_TOOLKIT_CALL ProError ProDrawingCurrentSheetGet(ProDrawing drawing, int* sheet);

// Working directory and file names.
#pragma once

#include "ProMdl.h"

PRO_TOOLKIT_CALL ProError ProDirectoryCurrentGet(ProPath directory);
PRO_TOOLKIT_CALL ProError ProDirectoryChange(wchar_t* directory);
PRO_TOOLKIT_CALL ProError ProFileMdlnameParse(wchar_t* path, ProPath directory, ProMdlName name,
                                              ProMdlExtension extension, int* version);
PRO_TOOLKIT_CALL ProError ProFileSubtypeGet(wchar_t* path, ProMdlfileType* type, ProMdlsubtype* subtype);

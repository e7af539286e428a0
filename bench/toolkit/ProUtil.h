// Working directory and file names.
#pragma once

#include "ProMdl.h"

PRO_TOOLKIT_CALL ProError ProDirectoryCurrentGet(ProPath directory);
PRO_TOOLKIT_CALL ProError ProDirectoryChange(wchar_t* directory);
PRO_TOOLKIT_CALL ProError ProFileMdlnameParse(wchar_t* path, ProPath directory, ProMdlName name,
                                              ProMdlExtension extension, int* version);
PRO_TOOLKIT_CALL ProError ProFileSubtypeGet(wchar_t* path, ProMdlfileType* type, ProMdlsubtype* subtype);
// Lets the user choose a file, `name` in `directory` to begin with, among those that fit the filter.
PRO_TOOLKIT_CALL ProError ProFileMdlnameOpen(wchar_t* title, wchar_t* filter, ProPath* shortcuts,
                                             ProName* shortcut_names, ProPath directory, wchar_t* name,
                                             ProPath selected);

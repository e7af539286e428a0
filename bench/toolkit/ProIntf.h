// Export to neutral formats.
#pragma once

#include "ProSolid.h"

// 1 STEP, 4 IGES, 7 ACIS.
typedef enum ProIntf3DFileTypes : int { PRO_INTF_EXPORT_UNUSED = -1 } ProIntf3DFileType;
// 12 binary STL.
typedef enum ProIntfSliceFileTypes : int { PRO_INTF_EXPORT_SLICE_UNUSED = -1 } ProIntfSliceFileType;

PRO_TOOLKIT_CALL ProError ProIntf3DFileWriteWithDefaultProfile(ProSolid solid, ProIntf3DFileType type,
                                                               wchar_t* path);
PRO_TOOLKIT_CALL ProError ProIntfSliceFileExport(ProSolid solid, wchar_t* path, ProIntfSliceFileType type,
                                                 double quality[2], ProMatrix transform, int flags);

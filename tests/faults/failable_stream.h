// A stream of Windows whose calls are counted and failed with the others of addin/platform.
#pragma once

#include <windows.h>

#include <objidl.h>

namespace vek::support {

// The system's stream in memory, behind such a one.
IStream* WINAPI CreateFailableMemStream(const BYTE* bytes, UINT size);

}  // namespace vek::support

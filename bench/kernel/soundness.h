// Whether what the toolkit's local operations give back is a solid that can exist. They report success for
// shapes that run through themselves.
#pragma once

#include <TopoDS_Solid.hxx>

namespace bench::kernel {

// Valid, with a volume above 0 and without faces that cross each other or themselves.
bool IsSound(const TopoDS_Solid& solid);

}  // namespace bench::kernel

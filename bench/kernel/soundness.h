// Whether what the toolkit's local operations give back is a solid that can exist. They report success for
// shapes that run through themselves.
#pragma once

#include <TopoDS_Face.hxx>
#include <TopoDS_Solid.hxx>
#include <functional>

namespace bench::kernel {

// Valid, with a volume above 0 and without faces that cross each other or themselves. Faces that are old were
// part of one sound solid before and are not held against each other again.
bool IsSound(const TopoDS_Solid& solid, const std::function<bool(const TopoDS_Face&)>& is_old);

}  // namespace bench::kernel

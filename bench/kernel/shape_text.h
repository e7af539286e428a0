// Shapes as texts: the toolkit's own binary form in base64, which keeps every number as it is.
#pragma once

#include <TopoDS_Shape.hxx>
#include <string>

namespace bench::kernel {

std::string TextOf(const TopoDS_Shape& shape);

// Throws Refusal when the text is of no shape.
TopoDS_Shape ShapeOf(const std::string& text);

}  // namespace bench::kernel

#include "bench/kernel/shape_text.h"

#include <BinTools.hxx>
#include <Standard_Failure.hxx>
#include <optional>
#include <sstream>

#include "bench/kernel/base64.h"
#include "bench/kernel/refusal.h"

namespace bench::kernel {

std::string TextOf(const TopoDS_Shape& shape) {
  constexpr bool kFacets = false, kNormals = false;
  std::ostringstream stream;
  BinTools::Write(shape, stream, kFacets, kNormals, BinTools_FormatVersion_VERSION_3);
  return Base64(stream.view());
}

TopoDS_Shape ShapeOf(const std::string& text) {
  const std::optional<std::string> bytes = FromBase64(text);
  TopoDS_Shape shape;
  if (bytes) {
    std::istringstream stream(*bytes);
    try {
      BinTools::Read(shape, stream);
    } catch (const Standard_Failure&) {
      shape.Nullify();
    }
  }
  if (shape.IsNull()) throw Refusal("The imported shape can't be read.");
  return shape;
}

}  // namespace bench::kernel

// Boxes around shapes, without the margins that the toolkit's own boxes have.
#pragma once

#include <TopoDS_Shape.hxx>
#include <gp_XYZ.hxx>

namespace bench::kernel {

struct Bounds {
  gp_XYZ low{1, 1, 1}, high{-1, -1, -1};  // nothing, until a point is added

  bool IsEmpty() const { return low.X() > high.X(); }
  void Add(const gp_XYZ& point);
  void Add(const Bounds& other);
};

// The box of a shape's faces: exact where they and their edges are lines, circles, ellipses and surfaces
// swept of them, else to some 1e-9 of the size.
Bounds BoundsOf(const TopoDS_Shape& shape);

}  // namespace bench::kernel

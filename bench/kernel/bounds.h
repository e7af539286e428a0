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

// How far a shape reaches along a direction: its points that lie furthest against it and along it.
struct Reach {
  explicit Reach(const gp_XYZ& along) : direction(along / along.Modulus()) {}

  double HeightOf(const gp_XYZ& point) const { return direction.Dot(point); }
  void Add(const gp_XYZ& point);

  gp_XYZ direction;
  bool is_empty = true;  // until a point is added
  gp_XYZ low, high;
};

// As exact as BoundsOf. The direction has a length.
Reach ReachOf(const TopoDS_Shape& shape, const gp_XYZ& direction);

// The box of a shape's faces: exact where they and their edges are lines, circles, ellipses and surfaces
// swept of them, else to some 1e-9 of the size.
Bounds BoundsOf(const TopoDS_Shape& shape);

}  // namespace bench::kernel

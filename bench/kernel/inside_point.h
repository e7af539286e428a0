// A point of a face that is well inside it.
#pragma once

#include <TopoDS_Face.hxx>
#include <gp_Dir.hxx>
#include <gp_Pnt.hxx>
#include <gp_Pnt2d.hxx>

namespace bench::kernel {

struct InsidePoint {
  gp_Pnt2d uv;
  gp_Pnt point;
  gp_Dir normal;  // out of the material
};

// The middle of the face's parameter box if it is on the face and away from its edges, else the point of a
// grid that is furthest from them.
InsidePoint FindInsidePoint(const TopoDS_Face& face);

}  // namespace bench::kernel

// What a picture of a part is drawn from: triangles with the surfaces' own normals, and its edges as
// polylines.
#pragma once

#include <TopoDS_Shape.hxx>
#include <array>
#include <cstddef>
#include <gp_XYZ.hxx>
#include <vector>

namespace bench::kernel {

// A copy of the shape that carries its facets: they stay within `deflection` of it, in mm, and turn by no
// more than 0.2 from one to the next. The shape itself stays without, for the cache keeps it.
TopoDS_Shape Meshed(const TopoDS_Shape& shape, double deflection);

struct MeshNode {
  gp_XYZ point;
  gp_XYZ normal;  // of the surface, out of the material, of length 1
};

struct MeshEdge {
  std::vector<gp_XYZ> points;
  bool is_smooth = false;  // its two faces go over into each other
};

struct Mesh {
  std::vector<MeshNode> nodes;
  std::vector<std::array<std::size_t, 3>> triangles;  // left-handed or right-handed, as they come
  std::vector<MeshEdge> edges;                        // without seams
};

// A face that the toolkit can't divide is left out.
Mesh MeshOf(const TopoDS_Shape& shape, double deflection);

}  // namespace bench::kernel

// The closed ways of edges that bound faces.
#pragma once

#include <string>
#include <vector>

#include "bench/kernel/keys.h"

namespace bench::kernel {

using Contour = std::vector<std::string>;  // the keys of its edges, in their order along it

// Finds the contours of a body's faces.
class Contours {
 public:
  // `keys` must outlive the contours.
  explicit Contours(const BodyKeys& keys);

  // The outer contour first. Edges without a key, which are seams and the poles of a surface, stand in none,
  // so that a full cylinder's wall has two contours and a sphere has no contour at all.
  std::vector<Contour> Of(const KeyedFace& face) const;

 private:
  const KeyedEdge* Find(const KeyedFace& face, const TopoDS_Edge& edge) const;

  // Solids that touch along an edge share it, and each has its own key for it.
  NCollection_DataMap<TopoDS_Shape, std::vector<const KeyedEdge*>, TopTools_ShapeMapHasher> edges_;
};

}  // namespace bench::kernel

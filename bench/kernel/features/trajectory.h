// The trajectory of a sweep: the curves of a sketch as one chain, run through from its start to its end.
#pragma once

#include <gp_Dir2d.hxx>
#include <vector>

#include "bench/kernel/planar_curve.h"
#include "bench/kernel/sketch_recipe.h"

namespace bench::kernel {

// A curve of the chain, turned so that it runs the chain's way.
struct PathPiece {
  PlanarCurve curve;
  int order = 0;  // which of the chain's entities it is of, from 0

  gp_Dir2d DirectionAtStart() const;
  gp_Dir2d DirectionAtEnd() const;
  bool IsLine() const;
  bool IsArc() const;
};

struct Trajectory {
  gp_Ax3 plane;
  std::vector<PathPiece> pieces;
  bool closed = false;
};

// An open chain starts at the free end of that end entity which has the lower id, a closed one at the start
// of the entity with the lowest id, and runs that entity's way there. Of a closed curve that is no circle the
// chain has the two halves. Throws Refusal for curves that hang together in no such chain, or that cross.
Trajectory TrajectoryOf(const Sketch& path);

}  // namespace bench::kernel

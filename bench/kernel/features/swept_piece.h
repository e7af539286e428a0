// The solid that a section makes along one piece of a trajectory.
#pragma once

#include <gp_Dir2d.hxx>
#include <optional>

#include "bench/kernel/features/trajectory.h"
#include "bench/kernel/named_shape.h"
#include "bench/kernel/section.h"

namespace bench::kernel {

// How far a section reaches along a direction of its plane, from its origin.
struct Extent {
  double low = 0, high = 0;
  double Size() const;  // to the farther side
};
Extent ExtentAlong(const std::vector<PlanarCurve>& curves, const gp_Dir2d& direction);

// The names of a piece's faces.
struct PieceNames {
  FaceName start, end;
  FaceName joint;  // of faces that vanish when the pieces are joined
  FeaturePlace place;
  int first_rank = 0;
  int path_entity = 0;

  FaceName Side(int section_entity) const;
};

// A piece to be made. The section lies where the piece starts, and moves along it as if fixed to a frame of
// the trajectory's direction and its plane's normal.
struct PieceRecipe {
  PathPiece piece;
  gp_Ax3 path_plane;
  Sketch section;
  Extent across;  // beside the trajectory, to its left in the trajectory's plane
  // Half the angles by which the trajectory turns left at mitred ends, radians.
  std::optional<double> mitre_at_start, mitre_at_end;
  PieceNames names;
};

// Throws Refusal for a section that is too wide for the piece's bends or corners.
NamedShape SweptPiece(const PieceRecipe& recipe);

}  // namespace bench::kernel

// Finds where planar curves cross, touch or lie on each other.
#pragma once

#include <gp_Pnt2d.hxx>
#include <optional>
#include <vector>

#include "bench/kernel/planar_curve.h"

namespace bench::kernel {

struct Crossing {
  int entity = 0, other = 0;  // the same twice where a curve meets itself
  gp_Pnt2d at;
};

// The first meeting of two of the curves, or of one with itself, other than at ends that they share.
std::optional<Crossing> FindCrossing(const std::vector<PlanarCurve>& curves);

}  // namespace bench::kernel

// The way in which a model is looked at.
#pragma once

#include <gp_XY.hxx>
#include <gp_XYZ.hxx>

#include "bench/kernel/json_fields.h"

namespace bench::kernel {

// A view without perspective: three directions of length 1 at right angles to each other, right-handed.
struct Sight {
  gp_XYZ right, up, toward;  // the last to the viewer

  gp_XY Seen(const gp_XYZ& point) const { return {right.Dot(point), up.Dot(point)}; }
};

// "view" of a request: a point as a row times its three rows gives x to the right, y upwards and z towards
// the viewer. Throws BadRequest.
Sight ReadSight(const Fields& request);

}  // namespace bench::kernel

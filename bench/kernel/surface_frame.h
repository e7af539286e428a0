// What a face's surface is: its kind, its own frame and sizes, in one form for every way the toolkit may
// store it.
#pragma once

#include <TopoDS_Face.hxx>
#include <gp_Dir.hxx>
#include <gp_Pnt.hxx>
#include <optional>

#include "bench/kernel/inside_point.h"

namespace bench::kernel {

// With y = axis × x, and r and R the radius and the minor radius, a point of the surface is
//   plane     origin + u x + v y
//   cylinder  origin + r (cos u x + sin u y) + v axis
//   cone      origin + (r + v sin a) (cos u x + sin u y) + v cos a axis, with a the half angle, above 0
//   sphere    origin + r cos v (cos u x + sin u y) + r sin v axis
//   torus     origin + (r + R cos v) (cos u x + sin u y) + R sin v axis
// and its own normal is the axis, or points away from the axis, the centre or the tube's middle.
struct SurfaceFrame {
  const char* type = "other";
  std::optional<gp_Pnt> origin;
  std::optional<gp_Dir> axis, x;
  std::optional<double> radius, minor_radius, half_angle_deg;
  double u_low = 0, u_high = 0, v_low = 0, v_high = 0;
  int orientation = 1;  // 1 when the surface's own normal points out of the material, else -1
};

SurfaceFrame FrameOf(const TopoDS_Face& face, const InsidePoint& inside);

}  // namespace bench::kernel

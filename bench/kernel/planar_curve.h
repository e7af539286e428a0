// The curve of one sketch entity, in the plane's own coordinates.
#pragma once

#include <Geom2d_Curve.hxx>
#include <Geom_Curve.hxx>
#include <Standard_Handle.hxx>
#include <gp_Ax3.hxx>
#include <gp_Pnt2d.hxx>
#include <optional>

#include "bench/kernel/sketch_recipe.h"

namespace bench::kernel {

// Ends this close to each other, in mm, are one point; a curve this short is none.
inline constexpr double kJoinTolerance = 1e-5;

struct PlanarCurve {
  int entity = 0;
  Handle(Geom2d_Curve) curve;
  double first = 0, last = 0;
  bool closed = false;

  gp_Pnt2d Start() const { return curve->Value(first); }
  gp_Pnt2d End() const { return curve->Value(last); }
};

// None for what is no curve (a point), for centerlines, and for texts, which are many (see TextOutline).
// Throws Refusal for a degenerate entity of any type: a line without length, a radius that is not above 0, an
// arc that spans no angle, a spline through too few points.
std::optional<PlanarCurve> CurveOf(const Entity& entity);

// The same curve in space, with the same parameters.
Handle(Geom_Curve) InSpace(const Handle(Geom2d_Curve) & curve, const gp_Ax3& plane);

// A point of the plane in space.
gp_Pnt InSpace(const gp_Pnt2d& point, const gp_Ax3& plane);

}  // namespace bench::kernel

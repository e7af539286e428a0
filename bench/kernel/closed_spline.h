// Closed interpolating splines. The toolkit's own fix the tangent at the first point, so that the curve
// depends on which point comes first.
#pragma once

#include <Geom2d_BSplineCurve.hxx>
#include <gp_Pnt2d.hxx>
#include <vector>

namespace bench::kernel {

// The cubic through the points and back to the first, its parameter running with the chords' lengths, with
// continuous curvature everywhere. At least three points, no two in a row the same.
Handle(Geom2d_BSplineCurve) ClosedSpline(const std::vector<gp_Pnt2d>& points);

}  // namespace bench::kernel

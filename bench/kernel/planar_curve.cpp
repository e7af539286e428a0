#include "bench/kernel/planar_curve.h"

#include <ElSLib.hxx>
#include <Geom2dAPI_Interpolate.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_Circle.hxx>
#include <Geom2d_Ellipse.hxx>
#include <Geom2d_Line.hxx>
#include <GeomAPI.hxx>
#include <TColgp_HArray1OfPnt2d.hxx>
#include <cmath>
#include <numbers>
#include <string>

#include "bench/kernel/closed_spline.h"
#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

constexpr double kFullTurn = 2 * std::numbers::pi;
// An angle, in radians, that is nothing: what a turn of 360 degrees loses on its way as text.
constexpr double kAngleTolerance = 1e-9;
// Beyond ten kilometres a coordinate is a slip, and the toolkit's tolerances mean nothing.
constexpr double kLargestCoordinate = 1e7;

[[noreturn]] void Refuse(int entity, const std::string& about) {
  throw Refusal("Entity " + std::to_string(entity) + " " + about + ".");
}

void CheckPoint(int entity, const gp_Pnt2d& point) {
  const double extreme = std::max(std::abs(point.X()), std::abs(point.Y()));
  if (!(extreme <= kLargestCoordinate)) Refuse(entity, "lies too far away");
}

void CheckRadius(int entity, double radius) {
  if (!(radius > kJoinTolerance)) Refuse(entity, "needs a radius above 0");
  if (!(radius <= kLargestCoordinate)) Refuse(entity, "has too large a radius");
}

void CheckLength(int entity, const gp_Pnt2d& from, const gp_Pnt2d& to) {
  CheckPoint(entity, from);
  CheckPoint(entity, to);
  if (!(from.Distance(to) > kJoinTolerance)) Refuse(entity, "is a line without length");
}

// One overload for each kind of entity.
class CurveMaker {
 public:
  explicit CurveMaker(int entity) : entity_(entity) {}

  using Result = std::optional<PlanarCurve>;

  Result operator()(const PointEntity& point) const {
    CheckPoint(entity_, point.at);
    return {};
  }

  Result operator()(const TextEntity& text) const {
    CheckPoint(entity_, text.from);
    CheckPoint(entity_, text.to);
    return {};
  }

  Result operator()(const CenterlineEntity& line) const {
    CheckLength(entity_, line.from, line.to);
    return {};
  }

  Result operator()(const LineEntity& line) const {
    CheckLength(entity_, line.from, line.to);
    const gp_Dir2d direction(gp_Vec2d(line.from, line.to));
    return PlanarCurve{entity_, new Geom2d_Line(line.from, direction), 0, line.from.Distance(line.to), false};
  }

  Result operator()(const ArcEntity& arc) const {
    CheckPoint(entity_, arc.center);
    CheckRadius(entity_, arc.radius);
    const Handle(Geom2d_Curve) circle = new Geom2d_Circle(gp_Ax2d(arc.center, gp_Dir2d(1, 0)), arc.radius);
    double sweep = arc.end - arc.start;
    if (sweep >= kFullTurn - kAngleTolerance) return PlanarCurve{entity_, circle, 0, kFullTurn, true};
    if (sweep < 0) sweep -= kFullTurn * std::floor(sweep / kFullTurn);
    if (!(sweep * arc.radius > kJoinTolerance) || !(sweep > kAngleTolerance))
      Refuse(entity_, "spans no angle");
    const double first = arc.start - kFullTurn * std::floor(arc.start / kFullTurn);
    return PlanarCurve{entity_, circle, first, first + sweep, false};
  }

  Result operator()(const CircleEntity& circle) const {
    CheckPoint(entity_, circle.center);
    CheckRadius(entity_, circle.radius);
    const gp_Ax2d axis(circle.center, gp_Dir2d(1, 0));
    return PlanarCurve{entity_, new Geom2d_Circle(axis, circle.radius), 0, kFullTurn, true};
  }

  Result operator()(const EllipseEntity& ellipse) const {
    CheckPoint(entity_, ellipse.center);
    CheckRadius(entity_, ellipse.radius_x);
    CheckRadius(entity_, ellipse.radius_y);
    // The toolkit wants the larger radius along the first axis.
    const bool wide = ellipse.radius_x >= ellipse.radius_y;
    const gp_Ax2d major(ellipse.center, wide ? gp_Dir2d(1, 0) : gp_Dir2d(0, 1));
    const double large = std::max(ellipse.radius_x, ellipse.radius_y);
    const double small = std::min(ellipse.radius_x, ellipse.radius_y);
    return PlanarCurve{entity_, new Geom2d_Ellipse(major, large, small), 0, kFullTurn, true};
  }

  Result operator()(const SplineEntity& spline) const {
    for (const gp_Pnt2d& point : spline.points) CheckPoint(entity_, point);
    const std::size_t given = spline.points.size();
    if (given < 2) Refuse(entity_, "is a spline through fewer than two points");
    for (std::size_t i = 1; i < given; ++i) {
      if (!(spline.points[i - 1].Distance(spline.points[i]) > kJoinTolerance))
        Refuse(entity_, "is a spline through the same point twice in a row");
    }
    const bool closed = spline.points.front().Distance(spline.points.back()) <= kJoinTolerance;
    if (closed && given < 4) Refuse(entity_, "is a closed spline through fewer than three points");
    const Handle(Geom2d_BSplineCurve) curve = closed ? Closed(spline.points) : Open(spline.points);
    return PlanarCurve{entity_, curve, curve->FirstParameter(), curve->LastParameter(), closed};
  }

 private:
  static Handle(Geom2d_BSplineCurve) Closed(std::vector<gp_Pnt2d> points) {
    points.pop_back();
    return ClosedSpline(points);
  }

  Handle(Geom2d_BSplineCurve) Open(const std::vector<gp_Pnt2d>& given) const {
    const int count = static_cast<int>(given.size());
    const Handle(TColgp_HArray1OfPnt2d) points = new TColgp_HArray1OfPnt2d(1, count);
    for (int i = 0; i < count; ++i) points->SetValue(i + 1, given[i]);
    constexpr bool kPeriodic = false;
    Geom2dAPI_Interpolate interpolation(points, kPeriodic, kJoinTolerance / 10);
    interpolation.Perform();
    if (!interpolation.IsDone()) Refuse(entity_, "is a spline that can't be interpolated");
    return interpolation.Curve();
  }

  int entity_;
};

}  // namespace

std::optional<PlanarCurve> CurveOf(const Entity& entity) {
  return std::visit(CurveMaker(entity.id), entity.geometry);
}

Handle(Geom_Curve) InSpace(const Handle(Geom2d_Curve) & curve, const gp_Ax3& plane) {
  return GeomAPI::To3d(curve, gp_Pln(plane));
}

gp_Pnt InSpace(const gp_Pnt2d& point, const gp_Ax3& plane) {
  return ElSLib::PlaneValue(point.X(), point.Y(), plane);
}

}  // namespace bench::kernel

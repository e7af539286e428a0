#include "bench/kernel/crossing.h"

#include <BndLib_Add2dCurve.hxx>
#include <Bnd_Box2d.hxx>
#include <ElCLib.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <Geom2dAPI_InterCurveCurve.hxx>
#include <Geom2dAdaptor_Curve.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_Circle.hxx>
#include <Geom2d_TrimmedCurve.hxx>
#include <IntRes2d_IntersectionSegment.hxx>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace bench::kernel {

namespace {

constexpr double kMeetTolerance = 1e-7;
// Near an end that two pieces share, a tangent contact is found over some way. A meeting within this part of
// the shorter piece is the shared end itself.
constexpr double kEndShare = 0.01;

// A stretch of a curve that can't cross itself.
struct Piece {
  int entity = 0;
  bool free = false;  // of a spline, which can meet itself
  Handle(Geom2d_TrimmedCurve) curve;
  gp_Pnt2d start, middle, end;
  double length = 0;
  Bnd_Box2d box;
};

bool IsFree(const PlanarCurve& curve) {
  return curve.curve->IsKind(STANDARD_TYPE(Geom2d_BSplineCurve));
}

// The parameters at which a curve is cut so that none of its pieces can meet itself or has both ends in one
// point.
std::vector<double> Cuts(const PlanarCurve& curve) {
  constexpr int kParts = 3;
  std::vector<double> cuts{curve.first};
  const auto divide = [&cuts](double to, int parts) {
    const double from = cuts.back();
    for (int i = 1; i <= parts; ++i) cuts.push_back(from + (to - from) * i / parts);
  };
  if (!IsFree(curve)) {
    divide(curve.last, curve.curve->IsPeriodic() ? kParts : 1);
    return cuts;
  }
  const auto spline = Handle(Geom2d_BSplineCurve)::DownCast(curve.curve);
  for (int knot = 2; knot <= spline->NbKnots(); ++knot) divide(spline->Knot(knot), kParts);
  return cuts;
}

std::vector<Piece> Pieces(const std::vector<PlanarCurve>& curves) {
  std::vector<Piece> pieces;
  for (const PlanarCurve& curve : curves) {
    const std::vector<double> cuts = Cuts(curve);
    for (std::size_t i = 1; i < cuts.size(); ++i) {
      Piece piece;
      piece.entity = curve.entity;
      piece.curve = new Geom2d_TrimmedCurve(curve.curve, cuts[i - 1], cuts[i]);
      piece.free = IsFree(curve);
      piece.start = piece.curve->StartPoint();
      piece.middle = curve.curve->Value((cuts[i - 1] + cuts[i]) / 2);
      piece.end = piece.curve->EndPoint();
      const Geom2dAdaptor_Curve adaptor(piece.curve);
      piece.length = GCPnts_AbscissaPoint::Length(adaptor);
      BndLib_Add2dCurve::Add(adaptor, 10 * kMeetTolerance, piece.box);
      pieces.push_back(piece);
    }
  }
  return pieces;
}

std::vector<gp_Pnt2d> SharedEnds(const Piece& a, const Piece& b) {
  std::vector<gp_Pnt2d> shared;
  for (const gp_Pnt2d& end : {a.start, a.end}) {
    if (end.Distance(b.start) <= kJoinTolerance || end.Distance(b.end) <= kJoinTolerance)
      shared.push_back(end);
  }
  return shared;
}

// Where two pieces meet, ends that they share included. The toolkit's points are checked against the pieces'
// boxes: it tells of points beyond the ends of arcs, too.
std::vector<gp_Pnt2d> Meetings(const Piece& a, const Piece& b) {
  std::vector<gp_Pnt2d> points;
  const auto add = [&](const gp_Pnt2d& point) {
    if (!a.box.IsOut(point) && !b.box.IsOut(point)) points.push_back(point);
  };
  Geom2dAPI_InterCurveCurve meetings(a.curve, b.curve, kMeetTolerance);
  for (int i = 1; i <= meetings.NbPoints(); ++i) add(meetings.Point(i));
  for (int i = 1; i <= meetings.NbSegments(); ++i) {
    const IntRes2d_IntersectionSegment& overlap = meetings.Intersector().Segment(i);
    const double first =
        overlap.HasFirstPoint() ? overlap.FirstPoint().ParamOnFirst() : a.curve->FirstParameter();
    const double last =
        overlap.HasLastPoint() ? overlap.LastPoint().ParamOnFirst() : a.curve->LastParameter();
    for (const double at : {first, (first + last) / 2, last}) add(a.curve->Value(at));
  }
  return points;
}

bool OnOneCircle(const Piece& a, const Piece& b) {
  const auto first = Handle(Geom2d_Circle)::DownCast(a.curve->BasisCurve());
  const auto second = Handle(Geom2d_Circle)::DownCast(b.curve->BasisCurve());
  return !first.IsNull() && !second.IsNull() &&
         first->Location().Distance(second->Location()) <= kJoinTolerance &&
         std::abs(first->Radius() - second->Radius()) <= kJoinTolerance;
}

bool HoldsAngleOf(const Piece& arc, const gp_Pnt2d& point) {
  const auto circle = Handle(Geom2d_Circle)::DownCast(arc.curve->BasisCurve());
  const double angle = ElCLib::Parameter(circle->Circ2d(), point);
  const double first = arc.curve->FirstParameter(), last = arc.curve->LastParameter();
  return ElCLib::InPeriod(angle, first, first + 2 * std::numbers::pi) <= last;
}

// Arcs of one circle, on which the toolkit's intersection is not to be relied upon: they overlap where an end
// or the middle of one lies on the other.
std::vector<gp_Pnt2d> MeetingsOnCircle(const Piece& a, const Piece& b) {
  std::vector<gp_Pnt2d> points;
  for (const gp_Pnt2d& point : {a.start, a.middle, a.end}) {
    if (HoldsAngleOf(b, point)) points.push_back(point);
  }
  for (const gp_Pnt2d& point : {b.start, b.middle, b.end}) {
    if (HoldsAngleOf(a, point)) points.push_back(point);
  }
  return points;
}

// The first point in which two pieces meet other than at ends that they share.
std::optional<gp_Pnt2d> Meeting(const Piece& a, const Piece& b) {
  const std::vector<gp_Pnt2d> shared = SharedEnds(a, b);
  const double slack = std::max(2 * kJoinTolerance, kEndShare * std::min(a.length, b.length));
  for (const gp_Pnt2d& point : OnOneCircle(a, b) ? MeetingsOnCircle(a, b) : Meetings(a, b)) {
    const bool at_end = std::any_of(shared.begin(), shared.end(),
                                    [&](const gp_Pnt2d& end) { return end.Distance(point) <= slack; });
    if (!at_end) return point;
  }
  return {};
}

}  // namespace

std::optional<Crossing> FindCrossing(const std::vector<PlanarCurve>& curves) {
  const std::vector<Piece> pieces = Pieces(curves);
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    for (std::size_t j = i + 1; j < pieces.size(); ++j) {
      const bool same_curve = pieces[i].entity == pieces[j].entity;
      if ((same_curve && !pieces[i].free) || pieces[i].box.IsOut(pieces[j].box)) continue;
      const auto at = Meeting(pieces[i], pieces[j]);
      if (at) return Crossing{pieces[i].entity, pieces[j].entity, *at};
    }
  }
  return {};
}

}  // namespace bench::kernel

#include "bench/kernel/features/trajectory.h"

#include <Geom2d_Circle.hxx>
#include <Geom2d_Line.hxx>
#include <algorithm>
#include <optional>
#include <string>

#include "bench/kernel/crossing.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/section.h"

namespace bench::kernel {

namespace {

gp_Dir2d DirectionAt(const PlanarCurve& curve, double parameter) {
  gp_Pnt2d point;
  gp_Vec2d direction;
  curve.curve->D1(parameter, point, direction);
  return gp_Dir2d(direction);
}

PlanarCurve Reversed(const PlanarCurve& curve) {
  PlanarCurve turned = curve;
  turned.curve = curve.curve->Reversed();
  turned.first = curve.curve->ReversedParameter(curve.last);
  turned.last = curve.curve->ReversedParameter(curve.first);
  return turned;
}

[[noreturn]] void RefuseApart() {
  throw Refusal("The trajectory's curves don't hang together in one chain.");
}

// One end of one of the curves.
struct CurveEnd {
  std::size_t curve = 0;
  bool last = false;
  bool operator==(const CurveEnd&) const = default;
};

class ChainFinder {
 public:
  // `curves` come in the order of their entities' ids.
  explicit ChainFinder(const std::vector<PlanarCurve>& curves) : curves_(curves) {}

  // Fills in pieces and whether they close.
  void Find(Trajectory& trajectory) const {
    const auto start = Start();
    CurveEnd at = start.value_or(CurveEnd{});
    do {
      if (trajectory.pieces.size() == curves_.size()) RefuseApart();
      const PlanarCurve& curve = curves_[at.curve];
      const int order = static_cast<int>(trajectory.pieces.size());
      trajectory.pieces.push_back({at.last ? Reversed(curve) : curve, order});
      const auto next = Partner({at.curve, !at.last});
      if (!next) break;
      at = *next;
    } while (!(at == CurveEnd{}));
    if (trajectory.pieces.size() != curves_.size()) RefuseApart();
    trajectory.closed = !start;
  }

 private:
  gp_Pnt2d At(const CurveEnd& end) const {
    return end.last ? curves_[end.curve].End() : curves_[end.curve].Start();
  }

  // The end that lies on this one.
  std::optional<CurveEnd> Partner(const CurveEnd& end) const {
    std::optional<CurveEnd> partner;
    for (std::size_t i = 0; i < curves_.size(); ++i) {
      for (const bool last : {false, true}) {
        const CurveEnd other{i, last};
        if (other == end || At(other).Distance(At(end)) > kJoinTolerance) continue;
        if (partner)
          throw Refusal("The trajectory branches at an end of entity " +
                        std::to_string(curves_[end.curve].entity) + ".");
        partner = other;
      }
    }
    return partner;
  }

  // The free end to start from; none of a closed chain.
  std::optional<CurveEnd> Start() const {
    std::optional<CurveEnd> start;
    for (std::size_t i = 0; i < curves_.size(); ++i) {
      for (const bool last : {false, true})
        if (!Partner({i, last}) && !start) start = CurveEnd{i, last};
    }
    return start;
  }

  const std::vector<PlanarCurve>& curves_;
};

// The halves of a closed curve: the toolkit's pipe needs two ends.
std::vector<PathPiece> Halves(const PlanarCurve& curve) {
  PlanarCurve near = curve, far = curve;
  near.closed = far.closed = false;
  near.last = far.first = (curve.first + curve.last) / 2;
  return {{near, 0}, {far, 0}};
}

}  // namespace

gp_Dir2d PathPiece::DirectionAtStart() const {
  return DirectionAt(curve, curve.first);
}

gp_Dir2d PathPiece::DirectionAtEnd() const {
  return DirectionAt(curve, curve.last);
}

bool PathPiece::IsLine() const {
  return !Handle(Geom2d_Line)::DownCast(curve.curve).IsNull();
}

bool PathPiece::IsArc() const {
  return !Handle(Geom2d_Circle)::DownCast(curve.curve).IsNull();
}

Trajectory TrajectoryOf(const Sketch& path) {
  std::vector<PlanarCurve> curves = BoundingCurves(path.entities);
  if (curves.empty()) throw Refusal("The trajectory has no curve.");
  std::ranges::sort(curves, {}, &PlanarCurve::entity);
  if (const auto crossing = FindCrossing(curves))
    throw Refusal("The trajectory meets itself at entities " + std::to_string(crossing->entity) + " and " +
                  std::to_string(crossing->other) + ".");

  Trajectory trajectory;
  trajectory.plane = path.plane;
  const bool has_closed = std::ranges::any_of(curves, &PlanarCurve::closed);
  if (!has_closed) {
    ChainFinder(curves).Find(trajectory);
    return trajectory;
  }
  if (curves.size() > 1) RefuseApart();
  trajectory.closed = true;
  trajectory.pieces = {{curves.front(), 0}};
  if (!trajectory.pieces.front().IsArc()) trajectory.pieces = Halves(curves.front());
  return trajectory;
}

}  // namespace bench::kernel

#include "bench/kernel/sketch_solver.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <optional>

#include "bench/kernel/refusal.h"
#include "bench/kernel/solver_system.h"

namespace bench::kernel {

namespace {

constexpr double kPi = std::numbers::pi;
// Points this close to each other are one.
constexpr double kSamePoint = 1e-5;
// Radians: lines this near to lying along or across one another count as doing so.
constexpr double kAligned = 1e-3, kQuarterTurn = kPi / 2;

// Such an arc is solved as a circle: its ends are one point and leave nothing to solve for.
bool IsFullTurn(const ArcEntity& arc) {
  return arc.end - arc.start > 2 * kPi - 1e-9;
}

gp_Pnt2d OnArc(const ArcEntity& arc, double angle) {
  return {arc.center.X() + arc.radius * std::cos(angle), arc.center.Y() + arc.radius * std::sin(angle)};
}

// What an entity is to the solver: its points, and its curve where it has one that can be solved.
struct Solved {
  enum class Shape { kPoint, kLine, kCircle, kArc, kOther } shape = Shape::kOther;
  Slvs_hEntity curve = 0;
  Slvs_hEntity first = 0, second = 0, center = 0;  // 0 where it has none
};

class Section {
 public:
  explicit Section(const std::vector<Entity>& entities) : entities_(entities) {
    // Whatever is fixed comes first, so that what lies on it is fixed as well.
    for (const bool fixed : {true, false})
      for (const Entity& entity : entities_)
        if (IsFixed(entity) == fixed) Enter(entity, fixed);
  }

  void Add(const SolverCondition& condition);
  bool Solve() { return system_.Solve(); }
  std::vector<Entity> Result() const;

 private:
  static bool IsFixed(const Entity& entity) {
    const bool movable = std::holds_alternative<LineEntity>(entity.geometry) ||
                         std::holds_alternative<CenterlineEntity>(entity.geometry) ||
                         std::holds_alternative<ArcEntity>(entity.geometry) ||
                         std::holds_alternative<CircleEntity>(entity.geometry);
    if (std::holds_alternative<PointEntity>(entity.geometry)) return entity.construction;
    return !movable;
  }

  // The solver's point there; one that is there already is shared.
  Slvs_hEntity PointAt(const gp_Pnt2d& at, bool fixed) {
    for (const auto& [place, point] : points_)
      if (place.Distance(at) <= kSamePoint) return point;
    const Slvs_hEntity point = system_.Point(at, fixed);
    points_.emplace_back(at, point);
    return point;
  }

  void Enter(const Entity& entity, bool fixed);
  const Solved& Of(const SolverTarget& target) const {
    const auto found = solved_.find(target.entity);
    if (found == solved_.end())
      throw Refusal("The section has no entity " + std::to_string(target.entity) + ".");
    return found->second;
  }
  // The point that a target names: an end, a centre, or a point entity as a whole; 0 for a curve.
  Slvs_hEntity PointOf(const SolverTarget& target) const;
  Slvs_hEntity CurveOf(const SolverTarget& target, std::initializer_list<Solved::Shape> shapes) const;
  Slvs_hEntity LineOf(const SolverTarget& target) const { return CurveOf(target, {Solved::Shape::kLine}); }
  Slvs_hEntity RoundOf(const SolverTarget& target) const {
    return CurveOf(target, {Solved::Shape::kCircle, Solved::Shape::kArc});
  }

  void AddCoincident(const SolverCondition& condition);
  void AddTangent(const SolverTarget& first, const SolverTarget& second);
  void AddTangentLine(const SolverTarget& round, const SolverTarget& line);
  void AddTangentRounds(const SolverTarget& first, const SolverTarget& second);
  // The point in which two curves are known to meet: an end of the one that lies on the other; 0 without one.
  Slvs_hEntity MeetingPoint(const SolverTarget& first, const SolverTarget& second) const;
  double RadiusOf(const SolverTarget& round) const;
  void AddAngle(const SolverCondition& condition);
  void AddPerpendicular(const SolverTarget& first, const SolverTarget& second);
  void AddParallel(const SolverTarget& first, const SolverTarget& second);
  void AddAligned(const SolverTarget& target, const gp_Vec2d& direction);
  // Begins the search with one of two lines turned against the other. From just across to where a line is to
  // lie nothing tells the solver which way to turn: it would stay there, or shrink the line to nothing.
  void TurnStart(const SolverTarget& first, const SolverTarget& second, double angle);
  gp_Vec2d DirectionOf(const SolverTarget& line) const;

  const std::vector<Entity>& entities_;
  SolverSystem system_;
  std::vector<std::pair<gp_Pnt2d, Slvs_hEntity>> points_;
  std::map<int, Solved> solved_;
  std::vector<std::pair<int, Slvs_hEntity>> on_curve_;  // points that a constraint holds on an entity's curve
};

void Section::Enter(const Entity& entity, bool fixed) {
  Solved& solved = solved_[entity.id];
  using Shape = Solved::Shape;
  if (const auto* point = std::get_if<PointEntity>(&entity.geometry)) {
    solved.shape = Shape::kPoint;
    solved.first = PointAt(point->at, fixed);
  } else if (const auto* line = std::get_if<LineEntity>(&entity.geometry)) {
    solved = {Shape::kLine, 0, PointAt(line->from, fixed), PointAt(line->to, fixed), 0};
    solved.curve = system_.Line(solved.first, solved.second);
  } else if (const auto* centerline = std::get_if<CenterlineEntity>(&entity.geometry)) {
    solved = {Shape::kLine, 0, PointAt(centerline->from, fixed), PointAt(centerline->to, fixed), 0};
    solved.curve = system_.Line(solved.first, solved.second);
  } else if (const auto* circle = std::get_if<CircleEntity>(&entity.geometry)) {
    solved.shape = Shape::kCircle;
    solved.center = PointAt(circle->center, fixed);
    solved.curve = system_.Circle(solved.center, circle->radius);
  } else if (const auto* arc = std::get_if<ArcEntity>(&entity.geometry); arc && IsFullTurn(*arc)) {
    solved.shape = Shape::kCircle;
    solved.center = PointAt(arc->center, fixed);
    solved.curve = system_.Circle(solved.center, arc->radius);
  } else if (arc) {
    solved = {Shape::kArc, 0, PointAt(OnArc(*arc, arc->start), fixed), PointAt(OnArc(*arc, arc->end), fixed),
              PointAt(arc->center, fixed)};
    solved.curve = system_.Arc(solved.center, solved.first, solved.second);
  } else if (const auto* spline = std::get_if<SplineEntity>(&entity.geometry)) {
    solved.first = PointAt(spline->points.front(), fixed);
    solved.second = PointAt(spline->points.back(), fixed);
  } else if (const auto* ellipse = std::get_if<EllipseEntity>(&entity.geometry)) {
    solved.center = PointAt(ellipse->center, fixed);
  }
}

Slvs_hEntity Section::PointOf(const SolverTarget& target) const {
  const Solved& solved = Of(target);
  if (solved.shape == Solved::Shape::kPoint) return solved.first;
  const Slvs_hEntity points[] = {0, solved.first, solved.second, solved.center};
  if (target.point == 1) return 0;
  const Slvs_hEntity point = target.point >= 2 && target.point <= 4 ? points[target.point - 1] : 0;
  if (point == 0) throw Refusal("Entity " + std::to_string(target.entity) + " has no such point.");
  return point;
}

Slvs_hEntity Section::CurveOf(const SolverTarget& target, std::initializer_list<Solved::Shape> shapes) const {
  const Solved& solved = Of(target);
  if (target.point != 1 || std::find(shapes.begin(), shapes.end(), solved.shape) == shapes.end())
    throw Refusal("Entity " + std::to_string(target.entity) + " is of the wrong kind for this.");
  return solved.curve;
}

void Section::AddCoincident(const SolverCondition& condition) {
  const Slvs_hEntity first = PointOf(condition.targets[0]), second = PointOf(condition.targets[1]);
  if (first == 0 && second == 0) throw Refusal("At least one of the two must be a point.");
  if (first != 0 && second != 0) {
    if (first != second) system_.Constrain(SLVS_C_POINTS_COINCIDENT, 0, first, second, 0, 0);
    return;
  }
  const Slvs_hEntity point = first != 0 ? first : second;
  const SolverTarget& on = condition.targets[first != 0 ? 1 : 0];
  const Solved& curve = Of(on);
  const bool is_line = curve.shape == Solved::Shape::kLine;
  if (point == curve.first || point == curve.second) return;
  const Slvs_hEntity entity = is_line ? LineOf(on) : RoundOf(on);
  system_.Constrain(is_line ? SLVS_C_PT_ON_LINE : SLVS_C_PT_ON_CIRCLE, 0, point, 0, entity, 0);
  on_curve_.emplace_back(on.entity, point);
}

Slvs_hEntity Section::MeetingPoint(const SolverTarget& first, const SolverTarget& second) const {
  const auto lies_on = [&](Slvs_hEntity point, const SolverTarget& curve) {
    return point == Of(curve).first || point == Of(curve).second ||
           std::find(on_curve_.begin(), on_curve_.end(), std::pair(curve.entity, point)) != on_curve_.end();
  };
  for (const auto& [one, other] : {std::pair(first, second), std::pair(second, first)})
    for (const Slvs_hEntity end : {Of(one).first, Of(one).second})
      if (end != 0 && lies_on(end, other)) return end;
  return 0;
}

double Section::RadiusOf(const SolverTarget& round) const {
  const Solved& solved = Of(round);
  return solved.shape == Solved::Shape::kCircle
             ? system_.RadiusOf(solved.curve)
             : system_.PointAt(solved.center).Distance(system_.PointAt(solved.first));
}

void Section::AddTangent(const SolverTarget& first, const SolverTarget& second) {
  const bool first_is_line = Of(first).shape == Solved::Shape::kLine;
  if (first_is_line || Of(second).shape == Solved::Shape::kLine)
    return first_is_line ? AddTangentLine(second, first) : AddTangentLine(first, second);
  AddTangentRounds(first, second);
}

// The radius to the point in which the two touch is at a right angle to the line. That point is sought as
// well, unless it is known: a second one in the same place would leave the solver without a clear direction.
void Section::AddTangentLine(const SolverTarget& round, const SolverTarget& other) {
  const Slvs_hEntity curve = RoundOf(round), line = LineOf(other);
  const Slvs_hEntity center = Of(round).center, known = MeetingPoint(round, other);
  const gp_Vec2d along = DirectionOf(other);
  if (known != 0) {
    const gp_Vec2d radius(system_.PointAt(known), system_.PointAt(center));
    if (radius.IsParallel(along, kAligned) && !system_.TurnStart(center, known, kQuarterTurn))
      TurnStart(other, other, kQuarterTurn);
    return system_.Constrain(SLVS_C_PERPENDICULAR, 0, 0, 0, system_.Line(center, known), line);
  }

  const gp_Pnt2d center_at = system_.PointAt(center), from = system_.PointAt(Of(other).first);
  gp_Pnt2d nearest =
      from.Translated(along * (gp_Vec2d(from, center_at).Dot(along) / along.SquareMagnitude()));
  if (nearest.Distance(center_at) <= kSamePoint)
    nearest.Translate(along.GetNormal().Normalized() * RadiusOf(round));
  const Slvs_hEntity touch = system_.Point(nearest, false);
  system_.Constrain(SLVS_C_PERPENDICULAR, 0, 0, 0, system_.Line(center, touch), line);
  system_.Constrain(SLVS_C_PT_ON_LINE, 0, touch, 0, line, 0);
  system_.Constrain(SLVS_C_PT_ON_CIRCLE, 0, touch, 0, curve, 0);
}

// The point in which they touch lies on the line through the centres.
void Section::AddTangentRounds(const SolverTarget& first, const SolverTarget& second) {
  const Slvs_hEntity curve = RoundOf(first), other_curve = RoundOf(second);
  const Slvs_hEntity center = Of(first).center, other_center = Of(second).center;
  if (center == other_center) throw Refusal("Circles about one centre can't be tangent.");
  const Slvs_hEntity axis = system_.Line(center, other_center);
  if (const Slvs_hEntity known = MeetingPoint(first, second); known != 0)
    return system_.Constrain(SLVS_C_PT_ON_LINE, 0, known, 0, axis, 0);

  // Side by side or one in the other, whichever is nearer.
  const gp_Pnt2d center_at = system_.PointAt(center), other_at = system_.PointAt(other_center);
  const double radius = RadiusOf(first), other_radius = RadiusOf(second);
  const double apart = center_at.Distance(other_at);
  const bool inside =
      std::abs(apart - std::abs(radius - other_radius)) < std::abs(apart - radius - other_radius);
  const double reach = inside && other_radius > radius ? -radius : radius;
  const gp_Vec2d towards = gp_Vec2d(center_at, other_at) / apart;
  const Slvs_hEntity touch = system_.Point(center_at.Translated(towards * reach), false);
  system_.Constrain(SLVS_C_PT_ON_LINE, 0, touch, 0, axis, 0);
  system_.Constrain(SLVS_C_PT_ON_CIRCLE, 0, touch, 0, curve, 0);
  system_.Constrain(SLVS_C_PT_ON_CIRCLE, 0, touch, 0, other_curve, 0);
}

gp_Vec2d Section::DirectionOf(const SolverTarget& line) const {
  const gp_Vec2d along(system_.PointAt(Of(line).first), system_.PointAt(Of(line).second));
  if (!(along.Magnitude() > kSamePoint))
    throw Refusal("Entity " + std::to_string(line.entity) + " has no direction.");
  return along;
}

// An angle is between the lines' directions or between one and the other's reverse: whichever is nearer to
// what is asked for.
void Section::AddAngle(const SolverCondition& condition) {
  if (!(condition.value > 0) || !(condition.value < kPi))
    throw Refusal("An angle must be above 0 and below 180 degrees.");
  const auto& targets = condition.targets;
  const Slvs_hEntity first = LineOf(targets[0]), second = LineOf(targets[1]);
  const double now = std::abs(DirectionOf(targets[0]).Angle(DirectionOf(targets[1])));
  const bool supplement = std::abs(kPi - now - condition.value) < std::abs(now - condition.value);
  if (std::sin(now) < kAligned) TurnStart(targets[0], targets[1], condition.value);
  system_.Constrain(SLVS_C_ANGLE, condition.value * 180 / kPi, 0, 0, first, second, supplement);
}

void Section::AddPerpendicular(const SolverTarget& first, const SolverTarget& second) {
  const Slvs_hEntity line = LineOf(first), other = LineOf(second);
  if (DirectionOf(first).IsParallel(DirectionOf(second), kAligned)) TurnStart(first, second, kQuarterTurn);
  system_.Constrain(SLVS_C_PERPENDICULAR, 0, 0, 0, line, other);
}

void Section::AddParallel(const SolverTarget& first, const SolverTarget& second) {
  const Slvs_hEntity line = LineOf(first), other = LineOf(second);
  if (DirectionOf(first).IsNormal(DirectionOf(second), kAligned)) TurnStart(first, second, kQuarterTurn);
  system_.Constrain(SLVS_C_PARALLEL, 0, 0, 0, line, other);
}

void Section::AddAligned(const SolverTarget& target, const gp_Vec2d& direction) {
  const Slvs_hEntity line = LineOf(target);
  if (DirectionOf(target).IsNormal(direction, kAligned)) TurnStart(target, target, kQuarterTurn);
  system_.AlignWith(line, direction);
}

void Section::TurnStart(const SolverTarget& first, const SolverTarget& second, double angle) {
  for (const SolverTarget* line : {&second, &first}) {
    const Solved& solved = Of(*line);
    if (system_.TurnStart(solved.second, solved.first, angle)) return;
    if (system_.TurnStart(solved.first, solved.second, angle)) return;
  }
}

void Section::Add(const SolverCondition& condition) {
  const auto needs = [&](std::size_t count) {
    if (condition.targets.size() != count) throw Refusal("A condition has too few or too many entities.");
  };
  const auto positive = [&] {
    if (!(condition.value > 0)) throw Refusal("A dimension must be above 0.");
  };
  const auto& targets = condition.targets;
  switch (condition.kind) {
    case SolverKind::kCoincident:
      needs(2);
      return AddCoincident(condition);
    case SolverKind::kHorizontal:
      needs(1);
      return AddAligned(targets[0], {1, 0});
    case SolverKind::kVertical:
      needs(1);
      return AddAligned(targets[0], {0, 1});
    case SolverKind::kTangent:
      needs(2);
      return AddTangent(targets[0], targets[1]);
    case SolverKind::kPerpendicular:
      needs(2);
      return AddPerpendicular(targets[0], targets[1]);
    case SolverKind::kParallel:
      needs(2);
      return AddParallel(targets[0], targets[1]);
    case SolverKind::kEqualRadius:
      needs(2);
      return system_.Constrain(SLVS_C_EQUAL_RADIUS, 0, 0, 0, RoundOf(targets[0]), RoundOf(targets[1]));
    case SolverKind::kEqualLength:
      needs(2);
      return system_.Constrain(SLVS_C_EQUAL_LENGTH_LINES, 0, 0, 0, LineOf(targets[0]), LineOf(targets[1]));
    case SolverKind::kLength:
      needs(1);
      positive();
      LineOf(targets[0]);
      return system_.Constrain(SLVS_C_PT_PT_DISTANCE, condition.value, Of(targets[0]).first,
                               Of(targets[0]).second, 0, 0);
    case SolverKind::kRadius:
    case SolverKind::kDiameter:
      needs(1);
      positive();
      return system_.Constrain(SLVS_C_DIAMETER,
                               condition.kind == SolverKind::kRadius ? 2 * condition.value : condition.value,
                               0, 0, RoundOf(targets[0]), 0);
    case SolverKind::kAngle:
      needs(2);
      return AddAngle(condition);
  }
}

// An arc through its solved ends, which turns as far as it did, give or take less than half a turn.
ArcEntity SolvedArc(const ArcEntity& before, const gp_Pnt2d& center, const gp_Pnt2d& first,
                    const gp_Pnt2d& second) {
  ArcEntity arc;
  arc.center = center;
  arc.radius = center.Distance(first);
  const auto angle_of = [&](const gp_Pnt2d& at) {
    return std::atan2(at.Y() - center.Y(), at.X() - center.X());
  };
  const auto nearest = [](double angle, double to) {
    return angle + 2 * kPi * std::round((to - angle) / (2 * kPi));
  };
  arc.start = nearest(angle_of(first), before.start);
  arc.end = nearest(angle_of(second), arc.start + (before.end - before.start));
  if (arc.end <= arc.start) arc.end += 2 * kPi;
  return arc;
}

std::vector<Entity> Section::Result() const {
  std::vector<Entity> result = entities_;
  for (Entity& entity : result) {
    const Solved& solved = solved_.at(entity.id);
    if (auto* point = std::get_if<PointEntity>(&entity.geometry)) {
      point->at = system_.PointAt(solved.first);
    } else if (auto* line = std::get_if<LineEntity>(&entity.geometry)) {
      *line = {system_.PointAt(solved.first), system_.PointAt(solved.second)};
    } else if (auto* centerline = std::get_if<CenterlineEntity>(&entity.geometry)) {
      *centerline = {system_.PointAt(solved.first), system_.PointAt(solved.second)};
    } else if (auto* circle = std::get_if<CircleEntity>(&entity.geometry)) {
      *circle = {system_.PointAt(solved.center), system_.RadiusOf(solved.curve)};
    } else if (auto* arc = std::get_if<ArcEntity>(&entity.geometry); arc && IsFullTurn(*arc)) {
      arc->center = system_.PointAt(solved.center);
      arc->radius = system_.RadiusOf(solved.curve);
    } else if (arc) {
      *arc = SolvedArc(*arc, system_.PointAt(solved.center), system_.PointAt(solved.first),
                       system_.PointAt(solved.second));
    }
  }
  return result;
}

// Of lines the length, of arcs and circles the radius; -1 for what has neither.
double ExtentOf(const Entity& entity) {
  if (const auto* line = std::get_if<LineEntity>(&entity.geometry)) return line->from.Distance(line->to);
  if (const auto* line = std::get_if<CenterlineEntity>(&entity.geometry))
    return line->from.Distance(line->to);
  if (const auto* circle = std::get_if<CircleEntity>(&entity.geometry)) return circle->radius;
  if (const auto* arc = std::get_if<ArcEntity>(&entity.geometry)) return arc->radius;
  return -1;
}

// A line that is to lie across where it lies can shrink to a point: that is no way of holding.
void RefuseCollapse(const std::vector<Entity>& before, const std::vector<Entity>& after) {
  for (std::size_t i = 0; i < before.size(); ++i)
    if (ExtentOf(before[i]) > kSamePoint && !(ExtentOf(after[i]) > kSamePoint))
      throw Refusal("Entity " + std::to_string(before[i].id) + " would shrink to a point.");
}

}  // namespace

std::vector<Entity> SolveSketch(std::vector<Entity> entities,
                                const std::vector<SolverCondition>& conditions) {
  if (conditions.empty()) return entities;
  Section section(entities);
  // Tangents want to know which points lie on their curves.
  for (const bool coincident : {true, false})
    for (const SolverCondition& condition : conditions)
      if ((condition.kind == SolverKind::kCoincident) == coincident) section.Add(condition);
  if (!section.Solve()) throw Refusal("The constraints and dimensions contradict or repeat each other.");
  std::vector<Entity> solved = section.Result();
  RefuseCollapse(entities, solved);
  return solved;
}

}  // namespace bench::kernel

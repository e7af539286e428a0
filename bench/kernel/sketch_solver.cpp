#include "bench/kernel/sketch_solver.h"

#include <slvs.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <optional>

#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

constexpr double kPi = std::numbers::pi;
// Points this close to each other, in mm, are one.
constexpr double kSamePoint = 1e-5;

// What is given stands in the first group, what is solved for in the second.
constexpr Slvs_hGroup kGiven = 1, kSought = 2;

// The library's system with its tables growing as things are added.
class System {
 public:
  System() {
    const Slvs_hParam zero = Param(0, kGiven), one = Param(1, kGiven);
    const Slvs_hEntity origin = Add(Slvs_MakePoint3d(NextEntity(), kGiven, zero, zero, zero));
    normal_ = Add(Slvs_MakeNormal3d(NextEntity(), kGiven, one, zero, zero, zero));
    plane_ = Add(Slvs_MakeWorkplane(NextEntity(), kGiven, origin, normal_));
  }

  Slvs_hEntity Point(const gp_Pnt2d& at, bool fixed) {
    const Slvs_hGroup group = fixed ? kGiven : kSought;
    const Slvs_hParam u = Param(at.X(), group), v = Param(at.Y(), group);
    return Add(Slvs_MakePoint2d(NextEntity(), group, plane_, u, v));
  }
  Slvs_hEntity Line(Slvs_hEntity from, Slvs_hEntity to) {
    return Add(Slvs_MakeLineSegment(NextEntity(), kSought, plane_, from, to));
  }
  Slvs_hEntity Circle(Slvs_hEntity center, double radius) {
    const Slvs_hParam value = Param(radius, kSought);
    const Slvs_hEntity distance = Add(Slvs_MakeDistance(NextEntity(), kSought, plane_, value));
    return Add(Slvs_MakeCircle(NextEntity(), kSought, plane_, center, normal_, distance));
  }
  Slvs_hEntity Arc(Slvs_hEntity center, Slvs_hEntity start, Slvs_hEntity end) {
    return Add(Slvs_MakeArcOfCircle(NextEntity(), kSought, plane_, normal_, center, start, end));
  }
  void Constrain(int type, double value, Slvs_hEntity point_a, Slvs_hEntity point_b, Slvs_hEntity entity_a,
                 Slvs_hEntity entity_b, bool other = false) {
    const auto handle = static_cast<Slvs_hConstraint>(constraints_.size() + 1);
    constraints_.push_back(
        Slvs_MakeConstraint(handle, kSought, type, plane_, value, point_a, point_b, entity_a, entity_b));
    constraints_.back().other = other ? 1 : 0;
  }

  // False when the constraints contradict or repeat each other, or the solver finds no way.
  bool Solve() {
    Slvs_System system{};
    system.param = params_.data();
    system.params = static_cast<int>(params_.size());
    system.entity = entities_.data();
    system.entities = static_cast<int>(entities_.size());
    system.constraint = constraints_.data();
    system.constraints = static_cast<int>(constraints_.size());
    Slvs_Solve(&system, kSought);
    return system.result == SLVS_RESULT_OKAY;
  }

  gp_Pnt2d PointAt(Slvs_hEntity point) const {
    const Slvs_Entity& entity = entities_.at(point - 1);
    return {Value(entity.param[0]), Value(entity.param[1])};
  }
  double RadiusOf(Slvs_hEntity circle) const {
    return std::abs(Value(entities_.at(entities_.at(circle - 1).distance - 1).param[0]));
  }

 private:
  Slvs_hParam Param(double value, Slvs_hGroup group) {
    const auto handle = static_cast<Slvs_hParam>(params_.size() + 1);
    params_.push_back(Slvs_MakeParam(handle, group, value));
    return handle;
  }
  Slvs_hEntity NextEntity() const { return static_cast<Slvs_hEntity>(entities_.size() + 1); }
  Slvs_hEntity Add(const Slvs_Entity& entity) {
    entities_.push_back(entity);
    return entity.h;
  }
  double Value(Slvs_hParam param) const { return params_.at(param - 1).val; }

  std::vector<Slvs_Param> params_;
  std::vector<Slvs_Entity> entities_;
  std::vector<Slvs_Constraint> constraints_;
  Slvs_hEntity normal_ = 0, plane_ = 0;
};

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
  void AddAngle(const SolverCondition& condition);
  gp_Vec2d DirectionOf(const SolverTarget& line) const;

  const std::vector<Entity>& entities_;
  System system_;
  std::vector<std::pair<gp_Pnt2d, Slvs_hEntity>> points_;
  std::map<int, Solved> solved_;
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
  } else if (const auto* arc = std::get_if<ArcEntity>(&entity.geometry)) {
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
}

// A point of its own lies on both curves, where the radius is at a right angle to the line, or goes on into
// the other one's.
void Section::AddTangent(const SolverTarget& first, const SolverTarget& second) {
  using Shape = Solved::Shape;
  const SolverTarget& round = Of(first).shape == Shape::kLine ? second : first;
  const SolverTarget& other = Of(first).shape == Shape::kLine ? first : second;
  const Slvs_hEntity curve = RoundOf(round);
  const Slvs_hEntity center = Of(round).center;
  const gp_Pnt2d center_at = system_.PointAt(center);
  if (Of(other).shape == Shape::kLine) {
    const Slvs_hEntity line = LineOf(other);
    const gp_Pnt2d from = system_.PointAt(Of(other).first);
    const gp_Vec2d along = DirectionOf(other);
    const double t = gp_Vec2d(from, center_at).Dot(along) / along.SquareMagnitude();
    // Where the two touch is known when they share an end.
    const Slvs_hEntity shared = [&]() -> Slvs_hEntity {
      for (const Slvs_hEntity end : {Of(round).first, Of(round).second})
        if (end != 0 && (end == Of(other).first || end == Of(other).second)) return end;
      return 0;
    }();
    const Slvs_hEntity touch = shared != 0 ? shared : system_.Point(from.Translated(along * t), false);
    const Slvs_hEntity radius = system_.Line(center, touch);
    system_.Constrain(SLVS_C_PERPENDICULAR, 0, 0, 0, radius, line);
    if (shared != 0) return;
    system_.Constrain(SLVS_C_PT_ON_LINE, 0, touch, 0, line, 0);
    system_.Constrain(SLVS_C_PT_ON_CIRCLE, 0, touch, 0, curve, 0);
    return;
  }
  const Slvs_hEntity other_curve = RoundOf(other);
  const Slvs_hEntity other_center = Of(other).center;
  const gp_Pnt2d other_at = system_.PointAt(other_center);
  if (center == other_center) throw Refusal("Circles about one centre can't be tangent.");
  const Slvs_hEntity touch = system_.Point(gp_Pnt2d((center_at.XY() + other_at.XY()) / 2), false);
  const Slvs_hEntity axis = system_.Line(center, other_center);
  system_.Constrain(SLVS_C_PT_ON_LINE, 0, touch, 0, axis, 0);
  system_.Constrain(SLVS_C_PT_ON_CIRCLE, 0, touch, 0, curve, 0);
  system_.Constrain(SLVS_C_PT_ON_CIRCLE, 0, touch, 0, other_curve, 0);
}

gp_Vec2d Section::DirectionOf(const SolverTarget& line) const {
  return {system_.PointAt(Of(line).first), system_.PointAt(Of(line).second)};
}

// An angle is between the lines' directions or between one and the other's reverse: whichever is nearer to
// what is asked for.
void Section::AddAngle(const SolverCondition& condition) {
  const Slvs_hEntity first = LineOf(condition.targets[0]), second = LineOf(condition.targets[1]);
  const double now = std::abs(DirectionOf(condition.targets[0]).Angle(DirectionOf(condition.targets[1])));
  const double value = std::abs(condition.value);
  const bool supplement = std::abs(kPi - now - value) < std::abs(now - value);
  system_.Constrain(SLVS_C_ANGLE, value * 180 / kPi, 0, 0, first, second, supplement);
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
    case SolverKind::kVertical:
      needs(1);
      return system_.Constrain(
          condition.kind == SolverKind::kHorizontal ? SLVS_C_HORIZONTAL : SLVS_C_VERTICAL, 0, 0, 0,
          LineOf(targets[0]), 0);
    case SolverKind::kTangent:
      needs(2);
      return AddTangent(targets[0], targets[1]);
    case SolverKind::kPerpendicular:
      needs(2);
      return system_.Constrain(SLVS_C_PERPENDICULAR, 0, 0, 0, LineOf(targets[0]), LineOf(targets[1]));
    case SolverKind::kParallel:
      needs(2);
      return system_.Constrain(SLVS_C_PARALLEL, 0, 0, 0, LineOf(targets[0]), LineOf(targets[1]));
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
    } else if (auto* arc = std::get_if<ArcEntity>(&entity.geometry)) {
      *arc = SolvedArc(*arc, system_.PointAt(solved.center), system_.PointAt(solved.first),
                       system_.PointAt(solved.second));
    }
  }
  return result;
}

const Entity& EntityOf(const std::vector<Entity>& entities, const SolverTarget& target) {
  const auto found = std::find_if(entities.begin(), entities.end(),
                                  [&](const Entity& each) { return each.id == target.entity; });
  if (found == entities.end())
    throw Refusal("The section has no entity " + std::to_string(target.entity) + ".");
  return *found;
}

gp_Vec2d LineVector(const std::vector<Entity>& entities, const SolverTarget& target) {
  const Entity& entity = EntityOf(entities, target);
  if (const auto* line = std::get_if<LineEntity>(&entity.geometry)) return {line->from, line->to};
  if (const auto* line = std::get_if<CenterlineEntity>(&entity.geometry)) return {line->from, line->to};
  throw Refusal("Entity " + std::to_string(target.entity) + " is no line.");
}

double RadiusOf(const std::vector<Entity>& entities, const SolverTarget& target) {
  const Entity& entity = EntityOf(entities, target);
  if (const auto* circle = std::get_if<CircleEntity>(&entity.geometry)) return circle->radius;
  if (const auto* arc = std::get_if<ArcEntity>(&entity.geometry)) return arc->radius;
  throw Refusal("Entity " + std::to_string(target.entity) + " has no radius.");
}

}  // namespace

std::vector<Entity> SolveSketch(std::vector<Entity> entities,
                                const std::vector<SolverCondition>& conditions) {
  if (conditions.empty()) return entities;
  Section section(entities);
  for (const SolverCondition& condition : conditions) section.Add(condition);
  if (!section.Solve()) throw Refusal("The constraints and dimensions contradict or repeat each other.");
  return section.Result();
}

double MeasureCondition(const std::vector<Entity>& entities, const SolverCondition& condition) {
  const auto& targets = condition.targets;
  if (targets.empty()) throw Refusal("A dimension needs an entity.");
  switch (condition.kind) {
    case SolverKind::kLength:
      return LineVector(entities, targets[0]).Magnitude();
    case SolverKind::kRadius:
      return RadiusOf(entities, targets[0]);
    case SolverKind::kDiameter:
      return 2 * RadiusOf(entities, targets[0]);
    case SolverKind::kAngle:
      if (targets.size() != 2) throw Refusal("An angle is between two lines.");
      return std::abs(LineVector(entities, targets[0]).Angle(LineVector(entities, targets[1])));
    default:
      throw Refusal("A constraint measures nothing.");
  }
}

}  // namespace bench::kernel

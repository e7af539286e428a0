// The tables of the SolveSpace library, which grow as things are added, and the search itself.
#pragma once

#include <slvs.h>

#include <cmath>
#include <gp_Pnt2d.hxx>
#include <gp_Vec2d.hxx>
#include <vector>

namespace bench::kernel {

// Points, curves and constraints in one plane. What is given stays where it is, the rest is sought. Handles
// count from 1; 0 stands for none.
class SolverSystem {
 public:
  SolverSystem() {
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
  // Its ends are at one distance from the centre: nothing to seek where all three points are given.
  Slvs_hEntity Arc(Slvs_hEntity center, Slvs_hEntity start, Slvs_hEntity end) {
    const bool given = IsGiven(center) && IsGiven(start) && IsGiven(end);
    return Add(
        Slvs_MakeArcOfCircle(NextEntity(), given ? kGiven : kSought, plane_, normal_, center, start, end));
  }
  bool IsGiven(Slvs_hEntity entity) const { return entities_.at(entity - 1).group == kGiven; }
  // Begins the search for a point turned about another one; false for a point that is given.
  bool TurnStart(Slvs_hEntity point, Slvs_hEntity about, double angle) {
    if (IsGiven(point)) return false;
    const gp_Pnt2d turned = PointAt(point).Rotated(PointAt(about), angle);
    const Slvs_Entity& entity = entities_.at(point - 1);
    params_.at(entity.param[0] - 1).val = turned.X();
    params_.at(entity.param[1] - 1).val = turned.Y();
    return true;
  }
  // The library's own horizontal and vertical are taken for equal names of one number, of which it notices no
  // repetition. A given line that isn't of unit length makes an equation of it that is counted.
  void AlignWith(Slvs_hEntity line, const gp_Vec2d& direction) {
    const Slvs_hEntity from = Point({0, 0}, true), to = Point(gp_Pnt2d(2 * direction.XY()), true);
    Constrain(SLVS_C_PARALLEL, 0, 0, 0, line, Line(from, to));
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
  static constexpr Slvs_hGroup kGiven = 1, kSought = 2;

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

}  // namespace bench::kernel

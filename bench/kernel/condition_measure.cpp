#include "bench/kernel/condition_measure.h"

#include <algorithm>
#include <cmath>
#include <gp_Vec2d.hxx>

#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

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

double AngleBetween(const gp_Vec2d& first, const gp_Vec2d& second) {
  return std::abs(std::atan2(first.Crossed(second), first.Dot(second)));
}

double RadiusOf(const std::vector<Entity>& entities, const SolverTarget& target) {
  const Entity& entity = EntityOf(entities, target);
  if (const auto* circle = std::get_if<CircleEntity>(&entity.geometry)) return circle->radius;
  if (const auto* arc = std::get_if<ArcEntity>(&entity.geometry)) return arc->radius;
  throw Refusal("Entity " + std::to_string(target.entity) + " has no radius.");
}

}  // namespace

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
      return AngleBetween(LineVector(entities, targets[0]), LineVector(entities, targets[1]));
    default:
      throw Refusal("A constraint measures nothing.");
  }
}

}  // namespace bench::kernel

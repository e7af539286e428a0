#include "bench/kernel/solve_request.h"

#include <map>

#include "bench/kernel/condition_measure.h"
#include "bench/kernel/sketch_solver.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

SolverKind ReadKind(const Fields& fields) {
  static const std::map<std::string, SolverKind> kinds{
      {"coincident", SolverKind::kCoincident},
      {"horizontal", SolverKind::kHorizontal},
      {"vertical", SolverKind::kVertical},
      {"tangent", SolverKind::kTangent},
      {"perpendicular", SolverKind::kPerpendicular},
      {"parallel", SolverKind::kParallel},
      {"equal_radius", SolverKind::kEqualRadius},
      {"equal_length", SolverKind::kEqualLength},
      {"length", SolverKind::kLength},
      {"radius", SolverKind::kRadius},
      {"diameter", SolverKind::kDiameter},
      {"angle", SolverKind::kAngle},
  };
  const std::string word = fields.Text("kind");
  const auto kind = kinds.find(word);
  if (kind == kinds.end()) fields.Complain("unknown kind '" + word + "'");
  return kind->second;
}

bool IsDimension(SolverKind kind) {
  return kind == SolverKind::kLength || kind == SolverKind::kRadius || kind == SolverKind::kDiameter ||
         kind == SolverKind::kAngle;
}

// A dimension without a value is held where it is.
SolverCondition ReadCondition(const Fields& fields, const std::vector<Entity>& entities) {
  SolverCondition condition;
  condition.kind = ReadKind(fields);
  for (const json& each : fields.Array("targets")) {
    const Fields target(each, "a target");
    condition.targets.push_back({target.Integer("entity"), target.Integer("point")});
  }
  if (IsDimension(condition.kind))
    condition.value = fields.Has("value") ? fields.Number("value") : MeasureCondition(entities, condition);
  return condition;
}

json Pair(const gp_Pnt2d& point) {
  return {point.X() + 0.0, point.Y() + 0.0};
}

// An entity that the solver may have moved; null for one that it leaves where it is.
json Moved(const Entity& entity) {
  json moved{{"id", entity.id}};
  if (const auto* point = std::get_if<PointEntity>(&entity.geometry)) {
    moved["at"] = Pair(point->at);
  } else if (const auto* line = std::get_if<LineEntity>(&entity.geometry)) {
    moved["from"] = Pair(line->from);
    moved["to"] = Pair(line->to);
  } else if (const auto* centerline = std::get_if<CenterlineEntity>(&entity.geometry)) {
    moved["from"] = Pair(centerline->from);
    moved["to"] = Pair(centerline->to);
  } else if (const auto* circle = std::get_if<CircleEntity>(&entity.geometry)) {
    moved["center"] = Pair(circle->center);
    moved["radius"] = circle->radius;
  } else if (const auto* arc = std::get_if<ArcEntity>(&entity.geometry)) {
    moved["center"] = Pair(arc->center);
    moved["radius"] = arc->radius;
    moved["start"] = arc->start;
    moved["end"] = arc->end;
  } else {
    return nullptr;
  }
  return moved;
}

}  // namespace

json AnswerSolve(const Fields& request) {
  std::vector<Entity> entities = ReadEntities(request, "the request");
  std::vector<SolverCondition> conditions;
  json values = json::array();
  for (const json& each : request.Array("conditions")) {
    const Fields fields(each, "condition " + std::to_string(conditions.size() + 1));
    conditions.push_back(ReadCondition(fields, entities));
    values.push_back(IsDimension(conditions.back().kind) ? json(conditions.back().value) : json());
  }
  json moved = json::array();
  for (const Entity& entity : SolveSketch(std::move(entities), conditions))
    if (json described = Moved(entity); !described.is_null()) moved.push_back(std::move(described));
  return {{"entities", std::move(moved)}, {"values", std::move(values)}};
}

}  // namespace bench::kernel

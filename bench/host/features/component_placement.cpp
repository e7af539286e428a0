#include "bench/host/features/component_placement.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "bench/host/features/constraint_motion.h"
#include "bench/host/features/features.h"

namespace bench {
namespace {

// Rounds after which constraints that still pull are taken to contradict each other.
constexpr int kMostRounds = 100;
// In millimetres, and in the numbers of a rotation.
constexpr double kAtRest = 1e-7;

struct ReadConstraints {
  std::optional<PlacementProblem> problem;
  std::vector<HeldFaces> held;
  bool fixed = false;
};

bool IsKnown(int type) {
  using enum ConstraintType;
  constexpr ConstraintType kTypes[] = {kMate,     kMateOffset, kAlign, kAlignOffset, kInsert,
                                       kParallel, kTangent,    kFix,   kAngle,       kPerpendicular};
  return std::ranges::any_of(kTypes, [type](ConstraintType each) { return static_cast<int>(each) == type; });
}

std::optional<PlacementProblem> ReadFaces(Model& assembly, const Component& component,
                                          const ComponentConstraint& constraint, HeldFaces& held) {
  Model* placed = PlacedModel(component);
  if (!placed || !constraint.on_assembly || !constraint.on_component)
    return PlacementProblem{PRO_TK_BAD_INPUTS, "lacks a reference"};
  const auto fixed = FrameOf(assembly, *constraint.on_assembly);
  const auto moving = FrameOf(*placed, *constraint.on_component);
  if (!fixed || !moving)
    return PlacementProblem{PRO_TK_GENERAL_ERROR, "refers to what is neither a plane nor a cylinder"};
  const bool is_angle = held.type == ConstraintType::kAngle;
  const double unit = is_angle ? 1 : MillimetresPer(assembly.length_unit);
  held.fixed = *fixed;
  held.moving = *moving;
  held.offset = constraint.offset.value_or(0) * unit;
  if (!MakesSense(held))
    return PlacementProblem{PRO_TK_GENERAL_ERROR, "makes no sense between faces of these kinds"};
  return std::nullopt;
}

ReadConstraints Read(Model& assembly, const Component& component,
                     const std::vector<ComponentConstraint>& constraints) {
  ReadConstraints read;
  for (const ComponentConstraint& constraint : constraints) {
    const std::string name = "constraint of type " + std::to_string(constraint.type) + " ";
    if (!IsKnown(constraint.type)) {
      read.problem = {PRO_TK_INVALID_TYPE, name + "is unknown here"};
      return read;
    }
    HeldFaces held;
    held.type = static_cast<ConstraintType>(constraint.type);
    if (held.type == ConstraintType::kFix) {
      read.fixed = true;
      continue;
    }
    if (auto problem = ReadFaces(assembly, component, constraint, held)) {
      read.problem = {problem->status, name + problem->what};
      return read;
    }
    read.held.push_back(held);
  }
  return read;
}

bool IsAtRest(const Matrix& before, const Matrix& after) {
  for (std::size_t row = 0; row < before.size(); ++row)
    for (std::size_t column = 0; column < before.size(); ++column)
      if (!(std::abs(before[row][column] - after[row][column]) < kAtRest)) return false;
  return true;
}

// Moves by one constraint after the other. Whether none of them moved anything: two that contradict each
// other may well move the place there and back.
bool RestsThroughARound(const std::vector<HeldFaces>& constraints, Matrix& place) {
  std::vector<Vector3> settled;
  bool rests = true;
  for (const HeldFaces& held : constraints) {
    const Matrix next = MovedByConstraint(held, place, settled);
    rests &= IsAtRest(place, next);
    place = next;
    settled.push_back(held.fixed.direction);
  }
  return rests;
}

bool IsHeldTo(Model& assembly, int feature, int other) {
  const Feature* found = assembly.FindFeature(feature);
  if (feature == other || !found) return feature == other;
  return std::ranges::any_of(found->parents, [&](int parent) { return IsHeldTo(assembly, parent, other); });
}

ProError Refuse(const Feature& feature, ProError status, const std::string& what) {
  return Refused(status, feature.id, "component " + std::to_string(feature.id) + ": " + what).status;
}

// The components in an order in which each comes behind those that it is held to.
void AddInOrder(Model& assembly, Feature& feature, std::vector<Feature*>& order) {
  if (std::ranges::find(order, &feature) != order.end()) return;
  for (const int parent : feature.parents)
    if (Feature* holder = FindComponent(assembly, parent)) AddInOrder(assembly, *holder, order);
  order.push_back(&feature);
}

}  // namespace

SolvedPlace SolvePlace(Model& assembly, const Component& component,
                       const std::vector<ComponentConstraint>& constraints) {
  const ReadConstraints read = Read(assembly, component, constraints);
  if (read.problem) return {read.problem, component.place};
  const double unit = MillimetresPer(assembly.length_unit);
  Matrix place = Scaled(component.place, unit);
  for (int round = 0; round < kMostRounds; ++round) {
    Matrix next = place;
    // The numbers of a place that suffices stay as they are, to the last digit.
    if (RestsThroughARound(read.held, next))
      return {std::nullopt, round == 0 ? component.place : Scaled(place, 1 / unit)};
    if (read.fixed)
      return {PlacementProblem{PRO_TK_GENERAL_ERROR, "what is fixed can't move"}, component.place};
    place = next;
  }
  return {PlacementProblem{PRO_TK_GENERAL_ERROR, "its constraints contradict each other"}, component.place};
}

ProError SetConstraints(Model& assembly, Feature& feature, std::vector<ComponentConstraint> constraints) {
  if (feature.status == PRO_FEAT_SUPPRESSED) return Refuse(feature, PRO_TK_BAD_CONTEXT, "it is suppressed");
  const auto holders = FeaturesHolding(assembly, constraints);
  for (const int holder : holders)
    if (IsHeldTo(assembly, holder, feature.id))
      return Refuse(feature, PRO_TK_BAD_CONTEXT, "it can't be held to itself or to what is held to it");
  Component& component = *feature.component;
  const SolvedPlace solved = SolvePlace(assembly, component, constraints);
  if (solved.problem) return Refuse(feature, solved.problem->status, solved.problem->what);
  component.place = solved.place;
  component.placed = !constraints.empty();
  component.constraints = std::move(constraints);
  feature.parents = holders;
  assembly.modified = true;
  return PRO_TK_NO_ERROR;
}

ProError PlaceComponent(Model& assembly, Feature& feature) {
  Component& component = *feature.component;
  if (feature.status == PRO_FEAT_SUPPRESSED || !PlacedModel(component)) return PRO_TK_NO_ERROR;
  const SolvedPlace solved = SolvePlace(assembly, component, component.constraints);
  if (solved.problem) return Refuse(feature, solved.problem->status, solved.problem->what);
  if (solved.place != component.place) assembly.modified = true;
  component.place = solved.place;
  return PRO_TK_NO_ERROR;
}

ProError PlaceComponents(Model& assembly) {
  std::vector<Feature*> order;
  for (Feature* feature : ActiveComponents(assembly)) AddInOrder(assembly, *feature, order);
  std::vector<std::pair<Feature*, Matrix>> before;
  const bool was_modified = assembly.modified;
  for (Feature* feature : order) {
    before.emplace_back(feature, feature->component->place);
    const ProError status = PlaceComponent(assembly, *feature);
    if (status == PRO_TK_NO_ERROR) continue;
    for (const auto& [moved, place] : before) moved->component->place = place;
    assembly.modified = was_modified;
    return status;
  }
  return PRO_TK_NO_ERROR;
}

}  // namespace bench

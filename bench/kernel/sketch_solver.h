// Solves the constraints and dimensions of a section: moves its entities until all hold.
#pragma once

#include <string>
#include <vector>

#include "bench/kernel/sketch_recipe.h"

namespace bench::kernel {

// A part of an entity: 1 the whole of it, 2 its first end, 3 its second, 4 its centre.
struct SolverTarget {
  int entity = 0;
  int point = 1;
};

enum class SolverKind {
  kCoincident,  // two points, or a point and a curve
  kHorizontal,  // a line, or two points
  kVertical,
  kTangent,
  kPerpendicular,
  kParallel,
  kEqualRadius,
  kEqualLength,
  kLength,  // of a line
  kRadius,
  kDiameter,
  kAngle,  // between two lines, radians
};

struct SolverCondition {
  SolverKind kind = SolverKind::kCoincident;
  std::vector<SolverTarget> targets;
  double value = 0;  // of a dimension
};

// The entities with lines, arcs, circles and points moved so that all conditions hold, as little as the
// solver finds. Ends that lie on one another are one point and stay together; construction points, splines,
// ellipses and texts stay where they are. Throws Refusal when the conditions contradict or repeat each other,
// and when one makes no sense for its targets.
std::vector<Entity> SolveSketch(std::vector<Entity> entities, const std::vector<SolverCondition>& conditions);

}  // namespace bench::kernel

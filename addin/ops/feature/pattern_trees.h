// The element trees of patterns.
#pragma once

#include <ProModelitem.h>

#include <optional>

#include "addin/host/element_tree_builder.h"

namespace vek::feature {

struct PatternDirection {
  ProModelitem plane{};  // the direction is its normal
  double spacing = 0;    // model units, signed
  int count = 1;         // instances along it, the leader among them
};

struct AxisPatternRecipe {
  ProModelitem axis{};
  int count = 0;  // instances, the leader among them
  double angle_deg = 0;
  bool fit_within_angle = true;  // the angle is the whole, not the step
};

ElementTreeBuilder DirectionPatternTree(const PatternDirection& first,
                                        const std::optional<PatternDirection>& second);

// A whole angle is divided by the count, and not by the count less one: it spreads the instances evenly over
// a full circle, and leaves a gap of one step at the end of anything less.
ElementTreeBuilder AxisPatternTree(const AxisPatternRecipe& recipe);

}  // namespace vek::feature

// Patterns: one feature that holds all instances but the first, which is what leads it.
#pragma once

#include <ProPattern.h>

#include "bench/host/features/features.h"

namespace bench {

// The bench's own number for a pattern's type.
constexpr ProFeattype kPattern = 2002;

// Makes a pattern of a single feature or of a group, by a tree of root 604. The leader must be active, of
// that class, and must not lead a pattern yet.
FeatureOutcome PatternFeature(Model& model, const Feature& leader, ProPatternClass pattern_class,
                              const ElementNode& tree);

// The pattern that the feature leads, or null.
const Feature* PatternLedBy(const Model& model, int leader);

}  // namespace bench

// Where a section lies: its plane and what turns it.
#pragma once

#include <optional>
#include <variant>
#include <vector>

#include "bench/host/features/feature_kind.h"

namespace bench {

struct SketchPlacement {
  PlaneFrame frame;
  std::vector<int> parents;  // the features that own plane and orientation reference
};

// Reads the setup element of a section (450) that keeps its rules. The two references must be alive planar
// surfaces or datum planes of the model that stand before `feature`, and must not be parallel. The section's
// origin is that of a datum plane; on a planar face it is the model's origin, dropped onto it.
std::variant<SketchPlacement, TreeProblem> PlaceSketch(const ElementNode& setup, Model& model,
                                                       const Feature& feature);

}  // namespace bench

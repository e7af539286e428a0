// Where a section lies: its plane and what turns it.
#pragma once

#include <optional>
#include <variant>
#include <vector>

#include "bench/host/features/feature_kind.h"

namespace bench {

struct ReferencePlane {
  Vector3 origin{};  // some point of the plane
  Vector3 normal{};  // of a face: out of the material
  int feature = -1;  // that owns it
};

// The datum plane or planar face that an element with one reference refers to. Nothing for what is no plane,
// is not in the model's topology, or does not stand before `feature`.
std::optional<ReferencePlane> PlaneReferredTo(const ElementNode& element, Model& model,
                                              const Feature& feature);

// A frame with that normal, the same for the same normal.
PlaneFrame FrameAcross(const Vector3& origin, const Vector3& normal);

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

// Solids from committed sketches: extrusions and revolves.
#pragma once

#include <string>

#include "addin/host/element_tree_builder.h"
#include "addin/server/provider.h"

namespace vek::feature {

// How far an extrusion goes, as its recipe numbers it.
enum DepthMode : int {
  kBlind = 0,
  kBothSides = 1,
  kTwoDistances = 2,
  kThroughAll = 3,
  kToNext = 4,
};

struct ExtrudeRecipe {
  std::wstring sketch_name;
  int depth_mode = kBlind;
  double depth1 = 0;  // model units, not negative
  double depth2 = 0;  // model units, not negative; the other side of two distances
  bool flip = false;  // against the normal of the sketch's plane
  bool is_cut = false;
  double taper_deg = 0;  // signed
};

struct RevolveRecipe {
  std::wstring sketch_name;
  double angle_deg = 360;
  bool is_cut = false;
  bool negative = false;  // left-handed about the axis
};

// The element trees of the two. The section element stays empty: the host fills it from the sketch. A depth
// mode that is none of the five is built as blind.
ElementTreeBuilder ExtrudeTree(const ExtrudeRecipe& recipe);
ElementTreeBuilder RevolveTree(const RevolveRecipe& recipe);

// Enters api_feature_extrude, api_feature_extrude_advanced and api_feature_revolve.
void RegisterExtrudeRevolveOperations(CreoMcpProvider& provider);

}  // namespace vek::feature

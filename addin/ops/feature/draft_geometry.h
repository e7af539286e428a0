// What a draft needs and no client names: which faces of a feature it tilts, around which edges, and which
// edge tells the pull direction.
//
// Main thread only. Coordinates are in model units.
#pragma once

#include <ProGeomitem.h>
#include <ProMdl.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "addin/ops/feature/edge_selection.h"
#include "addin/server/operation_result.h"

namespace vek::feature {

using PullVector = std::array<double, 3>;

// The direction that a word means: an axis, the plane across it, or that plane's name; Z for an empty word.
std::optional<PullVector> ReadPullDirection(const std::wstring& word);

// The faces of a feature. End faces are planes that lie across the pull direction, give or take some 32
// degrees; all others are side faces.
struct DraftFaces {
  std::vector<ProSurface> sides;
  std::vector<ProSurface> ends;
};

// Fails for an unknown direction, then for an unknown feature, one without faces and one without side faces.
CreoMcpOperationResult ClassifyDraftFaces(ProMdl model, const std::wstring& feature_name,
                                          const std::wstring& pull_direction, DraftFaces& faces);

struct DraftEdges {
  std::vector<EdgeItem> hinge;        // one for each side face, around which it tilts
  std::optional<EdgeItem> direction;  // one that runs along the pull direction
};

// The edges with which `sides` are drafted. The hinge of a side face lies on the lowest end face, seen along
// the pull direction; failing that, it is the lowest edge across that direction. On success there is a hinge
// and a direction.
CreoMcpOperationResult FindDraftEdges(ProMdl model, const std::vector<ProSurface>& sides,
                                      const std::vector<ProSurface>& ends, const PullVector& pull,
                                      DraftEdges& edges);

}  // namespace vek::feature

// Constraints of components: where they put what they hold.
//
// Only the component moves, and as little as its constraints ask: the smallest turn about its own origin that
// gives the directions their sense, then the shortest shift. A half turn, which no direction prefers, is made
// about a direction that an earlier constraint of the set has settled, or else about the assembly's X axis,
// or Y where the direction lies along X.
#pragma once

#include <ProObjects.h>

#include <optional>
#include <string>
#include <vector>

#include "bench/host/model/model.h"

namespace bench {

// Why constraints can't hold a component.
struct PlacementProblem {
  ProError status = PRO_TK_GENERAL_ERROR;
  std::string what;
};

struct SolvedPlace {
  std::optional<PlacementProblem> problem;
  Matrix place = kNoMove;  // in units of the assembly
};

// Where the constraints put the component, from where it is now. Nothing changes.
SolvedPlace SolvePlace(Model& assembly, const Component& component,
                       const std::vector<ComponentConstraint>& constraints);

// Gives the component another set of constraints in place of its own, and puts it where they say. Refused,
// with everything as it was, when they contradict each other, make no sense, or hold it to what depends on
// it. An empty set leaves it free where it is.
ProError SetConstraints(Model& assembly, Feature& feature, std::vector<ComponentConstraint> constraints);

// Puts every active component where its constraints say, those first that others are held to. Refused, with
// everything as it was, when one can't be held any more.
ProError PlaceComponents(Model& assembly);

// The same for one component.
ProError PlaceComponent(Model& assembly, Feature& feature);

}  // namespace bench

// The curves of a sketch as the trajectory of a sweep.
#pragma once

#include <ProFeature.h>

#include "addin/host/owned.h"
#include "addin/host/references.h"

namespace vek::feature {

// Collects the curves of `path_feature`: all of them, or the first alone where the host can't take them
// together. False, with an empty collection, when neither gives a curve. What the collection refers to joins
// `references`, which must outlive it.
bool BuildTrajectoryCollection(const ProFeature& path_feature, OwnedCollection& collection,
                               OwnedReferences& references);

}  // namespace vek::feature

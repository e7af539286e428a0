// The surface that a cosmetic thread lies on, and where it may begin.
#pragma once

#include <ProFeature.h>
#include <ProGeomitem.h>

#include <vector>

namespace vek::feature {

// The first surface of the feature that a thread can lie on; null when there is none.
ProSurface FindThreadSurface(const ProFeature& feature);

// What can be named as the start of a thread on `surface`, the likeliest first: the planes that border on it,
// then its edges.
std::vector<ProModelitem> FindThreadStarts(ProMdl model, ProSurface surface);

}  // namespace vek::feature

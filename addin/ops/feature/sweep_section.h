// The cross-section of a sweep, drawn into the section that the host keeps on the trajectory's crosshairs.
#pragma once

#include <ProMdl.h>
#include <ProSection.h>

namespace vek::feature {

// Draws the profile's first circle about the origin, whose place in the profile doesn't count; or, where the
// profile has none, copies the profile as it lies; or, where that can't be done, draws a small circle. The
// section is then dimensioned and solved. False when nothing could be drawn.
bool DrawCrossSection(ProMdl model, ProSection profile, ProSection section);

// The number of entities, and of those that are no construction. 0 for a section that can't be
// read.
int CountEntities(ProSection section);
int CountDrawnEntities(ProSection section);

}  // namespace vek::feature

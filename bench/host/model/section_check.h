// What a section may hold, and what in it has no geometry.
#pragma once

#include <vector>

#include "bench/host/model/section_data.h"

namespace bench {

// Whether a section takes the entity at all: finite numbers, radii above 0, angles in order, points enough
// for a curve. Entities without extent pass: only the section as a whole is judged by that.
bool CanHold(const SectionEntity& entity);

// The ids of the entities that have no extent, or more of it than a turn. A section with one of them does not
// regenerate.
std::vector<int> DegenerateEntities(const SectionData& section);

// Whether the section has a centerline that a revolve can turn about.
bool HasCenterline(const SectionData& section);

}  // namespace bench

// Texts as outlines: the shapes of a font's characters, brought into a box.
#pragma once

#include <vector>

#include "bench/kernel/planar_curve.h"

namespace bench::kernel {

// The closed loops of lines and quadratic curves round the characters, one behind the other on a line,
// stretched in both directions so that their bounds are the box between the entity's corners. All curves bear
// the entity's id. Throws Refusal for a text that leaves no ink, for a box without extent, and when the font
// can't be had.
std::vector<PlanarCurve> TextOutline(int entity, const TextEntity& text);

}  // namespace bench::kernel

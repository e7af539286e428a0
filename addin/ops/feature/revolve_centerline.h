// The axis of a revolve: it must be a centerline inside the sketch, and a sketch that has none is given one.
#pragma once

#include <ProFeature.h>

#include <span>
#include <string>
#include <string_view>

#include "addin/host/extracted_tree.h"
#include "addin/ops/feature/frame.h"
#include "addin/server/operation_result.h"

namespace vek::feature {

// Whether the section of the sketch holds a centerline; false when it can't be read.
bool SketchHasCenterline(const FeatureInfo& sketch);

// Sees to it that the sketch has a centerline. One that has is left as it stands. Otherwise a line of the
// sketch is promoted, a construction line before others, as `axis` and `axis_direction` of the arguments
// say; failing that, and if either is given, a centerline through the origin is added. The sketch's feature
// is redefined, and stays so whatever becomes of the revolve.
CreoMcpOperationResult PrepareRevolveCenterline(const FeatureInfo& sketch, const std::wstring& arguments);

// Whether a line of a sketch lies the way that the client asked for, by a word ("X", "Y", "Z") or else by a
// direction of two or three numbers. A client that asked for nothing is content with any line. Pure.
bool AxisMatchesLine(double x1, double y1, double x2, double y2, std::wstring_view axis,
                     std::span<const double> axis_direction);

// Redefines the sketch's feature by its edited tree.
CreoMcpOperationResult UpdateSketchFeature(const ProFeature& feature, const ExtractedTree& tree);

}  // namespace vek::feature

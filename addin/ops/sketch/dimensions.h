// Dimensions of a sketch.
//
// Like constraints they are records of the session, applied to the section of each commit. A driven dimension
// is kept in the list alone: the host's interface makes none in a section, so it never sees it.
#pragma once

#include "addin/ops/sketch/session.h"

namespace vek::sketch {

// Applies a record to the section of a commit; `scale` is model units per millimetre. A driven record counts
// as applied. False with the reason in `error`.
bool ApplySketchDimension(ProSection section, const SketchSession& session, double scale,
                          const SketchDimensionRecord& record, std::wstring& error);

CreoMcpOperationResult SketchDimensionAdd(const std::wstring& arguments);
CreoMcpOperationResult SketchDimensionSetDriven(const std::wstring& arguments);

}  // namespace vek::sketch
